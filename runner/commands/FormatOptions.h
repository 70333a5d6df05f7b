#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

#include "com/ComPtr.h"
#include "runner/commands/CommandWords.h"

namespace zu::runner::commands {

enum class Direction { Export, Import };

/// A new control of the component with the text format that options describe: --format, --separator, --quote,
/// --dates, and --set NAME=VALUE for any property of the format object.
class FormatOptions {
public:
    /// Throws zu::Error (InvalidArgument) for options that mean nothing, com::ComError when the component is
    /// missing.
    FormatOptions(const CommandWords& words, Direction direction);

    IDispatch* control() const noexcept { return control_.get(); }
    /// The name of the format in the control.
    const std::wstring& name() const noexcept { return name_; }
    bool isFixed() const noexcept;
    std::wstring Separator() const;
    /// Empty when texts stand without quotes.
    std::wstring Quote() const;

private:
    void Apply(const CommandWords& words, Direction direction);
    void Set(const std::wstring& property, const std::wstring& value);

    com::ComPtr<IDispatch> control_;
    com::ComPtr<IDispatch> format_;
    std::wstring name_;
};

}  // namespace zu::runner::commands
