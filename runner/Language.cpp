#include "runner/Language.h"

#include <windows.h>

#include <cwctype>
#include <utility>
#include <vector>

namespace zu::runner {
namespace {

struct KnownName {
    std::wstring_view name;
    Language language;
};

constexpr KnownName kNames[] = {
    {L"vbscript", Language::VBScript}, {L"vbs", Language::VBScript},       {L"jscript", Language::JScript},
    {L"js", Language::JScript},        {L"javascript", Language::JScript},
};

std::wstring Lowered(std::wstring_view text) {
    std::wstring result(text);
    for (wchar_t& character : result)
        character = static_cast<wchar_t>(std::towlower(character));
    return result;
}

// The code without its texts in double quotes, which may hold anything.
std::wstring WithoutTexts(std::wstring_view code) {
    std::wstring bare;
    bool inText = false;
    for (const wchar_t character : code) {
        if (character == L'"') {
            inText = !inText;
            bare += L' ';
        } else if (character == L'\n') {
            inText = false;
        }
        if (!inText && character != L'"') bare += character;
    }
    return bare;
}

// Runs of letters and digits, in small letters.
std::vector<std::wstring> WordsOf(std::wstring_view code) {
    std::vector<std::wstring> words;
    std::wstring word;
    for (const wchar_t character : code) {
        if (std::iswalnum(character) || character == L'_') {
            word += static_cast<wchar_t>(std::towlower(character));
        } else if (!word.empty()) {
            words.push_back(std::exchange(word, {}));
        }
    }
    if (!word.empty()) words.push_back(word);
    return words;
}

bool IsOneOf(const std::wstring& word, std::initializer_list<std::wstring_view> list) {
    for (const std::wstring_view candidate : list) {
        if (word == candidate) return true;
    }
    return false;
}

// Signs that only one of the languages knows.
int JScriptSigns(std::wstring_view code) {
    int signs = 0;
    constexpr std::wstring_view kOnlyJScript[] = {L"{", L"}", L"==", L"&&", L"||", L"++", L"!=", L"//", L";"};
    for (const std::wstring_view sign : kOnlyJScript) {
        if (code.find(sign) != std::wstring_view::npos) ++signs;
    }
    return signs;
}

}  // namespace

const wchar_t* EngineName(Language language) noexcept {
    return language == Language::JScript ? L"JScript" : L"VBScript";
}

std::optional<Language> LanguageByName(std::wstring_view name) {
    const std::wstring lowered = Lowered(name);
    for (const KnownName& known : kNames) {
        if (known.name == lowered) return known.language;
    }
    return std::nullopt;
}

std::optional<Language> LanguageByExtension(std::wstring_view path) {
    const std::size_t dot = path.find_last_of(L"./\\");
    if (dot == std::wstring_view::npos || path[dot] != L'.') return std::nullopt;
    const std::wstring extension = Lowered(path.substr(dot + 1));
    if (extension == L"vbs") return Language::VBScript;
    if (extension == L"js") return Language::JScript;
    return std::nullopt;
}

Language GuessLanguage(std::wstring_view code) {
    const std::wstring bare = WithoutTexts(code);
    int jscript = JScriptSigns(bare);
    int vbscript = 0;
    for (const std::wstring& word : WordsOf(bare)) {
        if (IsOneOf(word, {L"var", L"typeof", L"undefined", L"switch"})) jscript += 2;
        if (IsOneOf(word, {L"dim", L"sub", L"then", L"end", L"wend", L"elseif", L"redim", L"nothing"}))
            vbscript += 2;
    }
    return jscript > vbscript ? Language::JScript : Language::VBScript;
}

}  // namespace zu::runner
