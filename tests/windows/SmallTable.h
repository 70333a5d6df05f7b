#pragma once

#include <string>
#include <vector>

namespace zu::windows {

/// A person of the tables that the window tests work on.
struct Person {
    std::string name;
    std::string age;   ///< right-justified in five places
    std::string born;  ///< YYYYMMDD or blanks
    char member;       ///< T, F or ?
    bool deleted = false;
};

/// Writes people.dbf into a folder: NAME C10, AGE N5.1, BORN D, MEMBER L.
void WritePeople(const std::wstring& folder, const std::vector<Person>& people);
/// Makes the table one that is shown but not written: its records are longer than their fields say.
void MakeReadOnly(const std::wstring& folder);
/// Five people, the last but one marked as deleted.
std::vector<Person> FivePeople();
/// n001, n002 and so on.
std::vector<Person> ManyPeople(int count);

/// An empty folder for one test, with a backslash at the end.
std::wstring FreshFolder(const std::string& name);

}  // namespace zu::windows
