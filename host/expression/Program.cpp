#include "host/expression/Program.h"

#include <algorithm>
#include <utility>

#include "host/expression/Binder.h"
#include "host/expression/Canonical.h"
#include "host/expression/CharacterUnits.h"
#include "host/expression/Comparison.h"
#include "host/expression/Compiler.h"
#include "host/expression/Condition.h"
#include "host/expression/Function.h"
#include "host/expression/Parser.h"
#include "host/expression/RangeFinder.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::expression {

namespace {

const text::CodePage& PageOf(const RecordLayout* layout) {
    const text::CodePage* page = layout != nullptr ? layout->codePage : text::CodePage::Find(65001);
    if (page == nullptr) throw Error(ErrorKind::Internal, "an expression was compiled without a code page");
    return *page;
}

bool Uses(const Node& node, std::string_view function) {
    if (node.kind == NodeKind::Call && node.function->name == function) return true;
    return std::any_of(node.children.begin(), node.children.end(),
                       [function](const NodePtr& child) { return Uses(*child, function); });
}

bool ReadsMemos(const Node& node, const RecordLayout& layout) {
    if (node.kind == NodeKind::Field && layout.fields[node.field].storage == Storage::Memo) return true;
    return std::any_of(node.children.begin(), node.children.end(),
                       [&layout](const NodePtr& child) { return ReadsMemos(*child, layout); });
}

void CopyResult(const Slot& value, Result& out) {
    out.type = value.type;
    out.isNull = value.isNull || value.isEmpty;
    out.isEmpty = value.isEmpty;
    out.boolean = value.boolean;
    out.number = value.number;
    out.julianDay = value.julianDay;
    out.milliseconds = value.type == Type::DateTime ? value.milliseconds : 0;
    if (value.isNull || value.type != Type::Text) {
        out.text.clear();
    } else {
        out.text.assign(value.text);
    }
}

/// The operands of "+" between texts, from left to right.
void CollectParts(const Node& node, std::vector<const Node*>& parts) {
    const bool isJoin =
        node.kind == NodeKind::Arithmetic && node.op == Operator::Add && node.type == Type::Text;
    if (!isJoin) return parts.push_back(&node);
    for (const NodePtr& child : node.children)
        CollectParts(*child, parts);
}

}  // namespace

struct Program::Implementation {
    Implementation(std::u16string_view text, const RecordLayout* layout)
        : source(text), root(Parse(source)), page(PageOf(layout)) {
        Bind(*root, layout, page);
        machine.layout = layout;
        machine.codePage = &page;
        machine.countsCharacters = CountsCharacters(page);
        compiler = std::make_unique<Compiler>(machine);
        code = compiler->Compile(*root);
        canonical = CanonicalText(*root);
        const bool canBeCondition = root->type == Type::Boolean || root->type == Type::Unknown;
        if (canBeCondition && layout != nullptr) condition = std::make_unique<Condition>(*root, *compiler);
        usesDeleted = Uses(*root, "DELETED");
        usesRecordNumber = Uses(*root, "RECNO");
        usesMemos = layout != nullptr && ReadsMemos(*root, *layout);
    }

    const Condition& AsCondition() const {
        if (condition == nullptr) {
            throw Error(ErrorKind::TypeMismatch,
                        "expected a condition that is true or false, found one that gives " +
                            std::string(TypeName(root->type)));
        }
        return *condition;
    }

    std::u16string source;
    NodePtr root;
    const text::CodePage& page;
    Machine machine;
    std::unique_ptr<Compiler> compiler;
    Code code;
    std::unique_ptr<Condition> condition;
    std::string canonical;
    bool usesDeleted = false;
    bool usesRecordNumber = false;
    bool usesMemos = false;
};

Program::Program(std::unique_ptr<Implementation> implementation) noexcept
    : implementation_(std::move(implementation)) {}
Program::Program(Program&&) noexcept = default;
Program& Program::operator=(Program&&) noexcept = default;
Program::~Program() = default;

Program Program::Compile(std::u16string_view source, const RecordLayout& layout) {
    return Program(std::make_unique<Implementation>(source, &layout));
}

Program Program::CompileBytes(std::string_view source, const RecordLayout& layout) {
    std::u16string characters;
    PageOf(&layout).Decode(source, characters);
    return Compile(characters, layout);
}

Program Program::CompileDynamic(std::u16string_view source) {
    return Program(std::make_unique<Implementation>(source, nullptr));
}

Program Program::Again() const {
    return Program(
        std::make_unique<Implementation>(implementation_->source, implementation_->machine.layout));
}

Type Program::type() const noexcept {
    return implementation_->root->type;
}

std::size_t Program::textWidth() const noexcept {
    const Node& root = *implementation_->root;
    return root.type == Type::Text ? root.width : 0;
}

std::optional<std::size_t> Program::singleField() const noexcept {
    const Node& root = *implementation_->root;
    return root.kind == NodeKind::Field ? std::optional(root.field) : std::nullopt;
}

std::vector<std::string> Program::parts() const {
    std::vector<const Node*> nodes;
    CollectParts(*implementation_->root, nodes);
    std::vector<std::string> texts;
    texts.reserve(nodes.size());
    const std::u16string_view source = implementation_->source;
    for (const Node* node : nodes) {
        texts.push_back(text::ToUtf8(source.substr(node->begin, node->end - node->begin)));
    }
    return texts;
}

bool Program::usesDeleted() const noexcept {
    return implementation_->usesDeleted;
}
bool Program::usesRecordNumber() const noexcept {
    return implementation_->usesRecordNumber;
}
bool Program::usesMemos() const noexcept {
    return implementation_->usesMemos;
}
const std::string& Program::canonical() const noexcept {
    return implementation_->canonical;
}

void Program::Evaluate(const Row& row, Result& out) const {
    Machine machine = implementation_->machine;
    machine.row = row;
    CopyResult(implementation_->code.Run(machine), out);
}

void Program::EvaluateDynamic(NameSource& names, Result& out) const {
    Machine machine = implementation_->machine;
    machine.names = &names;
    CopyResult(implementation_->code.Run(machine), out);
}

bool Program::Test(const Row& row) const {
    Machine machine = implementation_->machine;
    machine.row = row;
    return implementation_->AsCondition().Test(machine);
}

void Program::Filter(const RecordRun& run, bool includeDeleted, std::size_t limit,
                     std::vector<std::uint32_t>& matches) const {
    implementation_->AsCondition().Filter(run, implementation_->machine, includeDeleted, limit, matches);
}

std::uint64_t Program::Count(const RecordRun& run, bool includeDeleted) const {
    return implementation_->AsCondition().Count(run, implementation_->machine, includeDeleted);
}

std::optional<KeyRange> Program::RangeOf(const Program& key) const {
    const Implementation& own = *implementation_;
    if (own.condition == nullptr) return std::nullopt;
    return FindRange(*own.root, *own.compiler, *key.implementation_->root);
}

bool IsBlank(std::u16string_view source) noexcept {
    return std::all_of(source.begin(), source.end(), [](char16_t c) {
        return c == u' ' || (c >= u'\t' && c <= u'\r') || c == 0x00A0 || c == 0x3000 || c == 0xFEFF;
    });
}

}  // namespace zu::expression
