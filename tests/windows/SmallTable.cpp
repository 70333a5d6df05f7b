#include "tests/windows/SmallTable.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace zu::windows {

namespace {

struct Field {
    const char* name;
    char type;
    unsigned width;
    unsigned decimals;
};
constexpr Field kFields[] = {
    {"NAME", 'C', 10, 0}, {"AGE", 'N', 5, 1}, {"BORN", 'D', 8, 0}, {"MEMBER", 'L', 1, 0}};

void Put(std::string& bytes, unsigned value, unsigned count) {
    for (unsigned i = 0; i < count; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

std::string Padded(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

}  // namespace

void WritePeople(const std::wstring& folder, const std::vector<Person>& people) {
    std::string bytes = "\x03\x1A\x0B\x15";
    Put(bytes, static_cast<unsigned>(people.size()), 4);
    Put(bytes, 32 + 32 * 4 + 1, 2);
    Put(bytes, 1 + 10 + 5 + 8 + 1, 2);
    Put(bytes, 0, 17);
    bytes += '\x03';  // Windows ANSI
    Put(bytes, 0, 2);
    for (const Field& field : kFields) {
        std::string name(field.name);
        name.resize(11, '\0');
        bytes += name + field.type;
        Put(bytes, 0, 4);
        Put(bytes, field.width, 1);
        Put(bytes, field.decimals, 1);
        Put(bytes, 0, 14);
    }
    bytes += '\x0D';
    for (const Person& person : people)
        bytes += (person.deleted ? "*" : " ") + Padded(person.name, 10) + Padded(person.age, 5) +
                 Padded(person.born, 8) + person.member;
    bytes += '\x1A';
    std::ofstream(std::filesystem::path(folder + L"people.dbf"), std::ios::binary) << bytes;
}

void MakeReadOnly(const std::wstring& folder) {
    std::fstream file(std::filesystem::path(folder + L"people.dbf"),
                      std::ios::in | std::ios::out | std::ios::binary);
    constexpr int kRecordLengthAt = 10;
    file.seekg(kRecordLengthAt);
    const char longer = static_cast<char>(file.get() + 1);
    file.seekp(kRecordLengthAt);
    file.put(longer);
}

std::vector<Person> FivePeople() {
    return {{"Anna", " 31.5", "19930402", 'T'},
            {"Bertil", " 45.0", "19791224", 'F'},
            {"Cecilia", "  7.0", "20180630", 'T'},
            {"David", "  8.0", "20170101", 'F', true},
            {"  Eva", " 99.9", "        ", '?'}};
}

std::vector<Person> ManyPeople(int count) {
    std::vector<Person> people;
    for (int i = 1; i <= count; ++i) {
        char name[16];
        std::snprintf(name, sizeof name, "n%05d", i);
        people.push_back({name, "  1.0", "20200101", 'T'});
    }
    return people;
}

std::wstring FreshFolder(const std::string& name) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / ("zu-windows-" + name);
    std::error_code error;
    std::filesystem::remove_all(folder, error);
    std::filesystem::create_directories(folder);
    return folder.wstring() + L"\\";
}

}  // namespace zu::windows
