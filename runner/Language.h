#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zu::runner {

/// The script languages that the runner hosts.
enum class Language { VBScript, JScript };

/// The registered name of the language's script engine.
const wchar_t* EngineName(Language language) noexcept;

/// The language by a name that people give it (vbscript, vbs, jscript, js, javascript), in any case.
std::optional<Language> LanguageByName(std::wstring_view name);

/// The language by the extension of a script's path (.vbs, .js), in any case.
std::optional<Language> LanguageByExtension(std::wstring_view path);

/// The language that a piece of code without a file name looks like. Undecided code counts as VBScript.
Language GuessLanguage(std::wstring_view code);

}  // namespace zu::runner
