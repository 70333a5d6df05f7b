#include <algorithm>
#include <array>
#include <string>

#include "host/expression/CharacterUnits.h"
#include "host/expression/LikePattern.h"
#include "host/expression/functions/Functions.h"
#include "host/expression/functions/TextLimit.h"
#include "host/expression/functions/Widths.h"

namespace zu::expression {

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

/// A byte position as the answer of a search: counted from 1, 0 for nowhere.
void SetPosition(const Instruction& step, const Machine& machine, std::string_view text, std::size_t at) {
    if (at == kNowhere) return step.out->SetNumber(0);
    step.out->SetNumber(static_cast<double>(UnitCount(text.substr(0, at), machine.countsCharacters)) + 1);
}

std::size_t Occurrence(const Instruction& step) {
    return step.count() > 2 ? CutCount(step.argument(2).number) : 1;
}

void At(const Instruction& step, const Machine& machine) {
    const std::string_view sought = step.argument(0).text;
    const std::string_view text = step.argument(1).text;
    std::size_t wanted = Occurrence(step);
    std::size_t at = kNowhere;
    if (!sought.empty() && wanted > 0) {
        at = text.find(sought);
        while (--wanted > 0 && at != kNowhere)
            at = text.find(sought, at + 1);
    }
    SetPosition(step, machine, text, at);
}

void Rat(const Instruction& step, const Machine& machine) {
    const std::string_view sought = step.argument(0).text;
    const std::string_view text = step.argument(1).text;
    std::size_t wanted = Occurrence(step);
    std::size_t at = kNowhere;
    if (!sought.empty() && wanted > 0) {
        at = text.rfind(sought);
        while (--wanted > 0 && at != kNowhere)
            at = at == 0 ? kNowhere : text.rfind(sought, at - 1);
    }
    SetPosition(step, machine, text, at);
}

void InStr(const Instruction& step, const Machine& machine) {
    const std::string_view text = step.argument(0).text;
    const std::string_view sought = step.argument(1).text;
    SetPosition(step, machine, text, text.find(sought));
}

void InStrFrom(const Instruction& step, const Machine& machine) {
    const std::size_t start = CutCount(step.argument(0).number);
    const std::string_view text = step.argument(1).text;
    if (start == 0) return step.out->SetNumber(0);
    const std::size_t from = UnitOffset(text, start - 1, machine.countsCharacters);
    SetPosition(step, machine, text, text.find(step.argument(2).text, from));
}

void StrTran(const Instruction& step, const Machine&) {
    const std::string_view text = step.argument(0).text;
    const std::string_view sought = step.argument(1).text;
    const std::string_view replacement = step.count() > 2 ? step.argument(2).text : std::string_view{};
    if (sought.empty()) return step.out->SetText(text);
    std::string& out = step.out->buffer;
    out.clear();
    std::size_t from = 0;
    for (;;) {
        const std::size_t at = text.find(sought, from);
        out += text.substr(from, at == kNowhere ? kNowhere : at - from);
        if (at == kNowhere) break;
        out += replacement;
        // A text that grows is bounded like any other that is made here; one that shrinks never is too long.
        if (out.size() > text.size()) TextCount(step, static_cast<double>(out.size()));
        from = at + sought.size();
    }
    step.out->SetBuffer();
}

void StrTranWidth(Node& call) {
    const std::size_t text = call.children[0]->width;
    const std::size_t replacement = call.children.size() > 2 ? call.children[2]->width : 0;
    call.width = text;
    if (replacement > call.children[1]->width || !call.children[1]->isFixedWidth) {
        call.width = std::max(text, kMaxMadeText);
    }
}

void Like(const Instruction& step, const Machine& machine) {
    step.out->SetBoolean(MatchesLike(step.argument(0).text, step.argument(1).text, machine.countsCharacters));
}

constexpr NullRule kStrict = NullRule::Strict;

constexpr std::array kFunctions{
    Function{"AT", "TTn", 'N', kStrict, nullptr, At},
    Function{"RAT", "TTn", 'N', kStrict, nullptr, Rat},
    Function{"INSTR", "TT", 'N', kStrict, nullptr, InStr},
    Function{"INSTR", "NTT", 'N', kStrict, nullptr, InStrFrom},
    Function{"STRTRAN", "TTt", 'T', kStrict, StrTranWidth, StrTran},
    Function{"LIKE", "TT", 'B', kStrict, nullptr, Like},
};

}  // namespace

std::span<const Function> SearchFunctions() {
    return kFunctions;
}

}  // namespace zu::expression
