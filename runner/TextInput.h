#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

namespace zu::runner {

/// Standard input: characters of a console, otherwise UTF-8 (with or without a mark) or, where the bytes are
/// not, the ANSI code page. Reading past the end throws com::ComError ("Input past end of file").
class TextInput {
public:
    TextInput();

    bool AtEnd();
    /// At the end of a line or of everything.
    bool AtEndOfLine();
    /// Up to `count` characters, fewer at the end.
    std::wstring Read(std::size_t count);
    /// The rest of the line, without its end.
    std::wstring ReadLine();
    std::wstring ReadAll();
    void SkipLine();

    /// All bytes that are left, as they came.
    std::string ReadBytes();

private:
    bool Fill();     // more bytes; false at the end
    bool Receive();  // as Fill, without a look at the mark
    bool Available(std::size_t bytes);
    void RequireInput();
    std::wstring NextCharacter();
    std::string TakeLine();
    std::string ReadConsoleLine();

    HANDLE handle_;
    bool console_ = false;
    bool ended_ = false;
    bool begun_ = false;
    std::string buffer_;
    std::size_t next_ = 0;
};

}  // namespace zu::runner
