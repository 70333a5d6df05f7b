#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "runner/Language.h"

namespace zu::runner {

/// A script: where it comes from, its language and its text.
class ScriptSource {
public:
    /// A file. Without a stated language its extension decides.
    /// Throws zu::Error: NotFound, AccessDenied, IoFailure for the file; InvalidArgument when the language
    /// cannot be told; Unsupported when the file is no text.
    static ScriptSource FromFile(const std::wstring& path, std::optional<Language> language);
    /// Code that has no file; `name` stands for one in messages.
    static ScriptSource FromText(std::wstring name, std::wstring text, std::optional<Language> language);
    /// Bytes that have no file (standard input).
    static ScriptSource FromBytes(std::wstring name, std::string_view bytes,
                                  std::optional<Language> language);

    /// The name as the user wrote it, for messages.
    const std::wstring& name() const noexcept { return name_; }
    /// The absolute path; for code without a file the same as `name`.
    const std::wstring& fullPath() const noexcept { return fullPath_; }
    /// The last part of the name.
    std::wstring fileName() const;
    Language language() const noexcept { return language_; }
    const std::wstring& text() const noexcept { return text_; }

    /// A line without its end, counted from 1; empty when there is no such line.
    std::wstring_view Line(unsigned number) const noexcept;

private:
    ScriptSource(std::wstring name, std::wstring fullPath, std::wstring text, Language language);

    std::wstring name_;
    std::wstring fullPath_;
    std::wstring text_;
    Language language_;
};

}  // namespace zu::runner
