// Writes tables and indexes that independent programs then read (check_indexes.py): new tables of ours, and
// the sample tables of other makers with all their tags built anew.
//
// usage: write_indexes SAMPLES OUT

#include <cstdio>
#include <exception>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "host/technologies/dbf/CodePageChoice.h"
#include "host/technologies/dbf/DbfHeader.h"
#include "host/technologies/dbf/RecordFile.h"
#include "host/technologies/dbf/TableLayout.h"
#include "host/technologies/dbf/TableWriter.h"
#include "host/technologies/dbf/cdx/CdxBuilder.h"
#include "host/technologies/dbf/cdx/CdxChecker.h"
#include "host/technologies/dbf/cdx/OpenTag.h"
#include "portable/calendar/Calendar.h"
#include "portable/error/Error.h"

namespace {

using namespace zu;
using dbf::cdx::TagDefinition;

/// An open table without the rest of a technology.
class PlainTable {
public:
    PlainTable(const std::string& path, std::string name) : name_(std::move(name)) {
        auto file = files::SystemFiles().Open(path, {});
        const dbf::DbfHeader header = dbf::DbfHeader::Read(*file);
        std::vector<std::string> warnings;
        codePage_ = &dbf::ChooseCodePage(header, "", 1252, warnings);
        layout_ = dbf::TableLayout::Make(header, *codePage_, name_);
        records_ = std::make_unique<dbf::RecordFile>(std::move(file), header);
    }
    dbf::cdx::IndexContext Context() { return {layout_.record, *records_, name_, *codePage_}; }

private:
    std::string name_;
    const text::CodePage* codePage_ = nullptr;
    dbf::TableLayout layout_;
    std::unique_ptr<dbf::RecordFile> records_;
};

// NAME.orders: a line for each tag, its name and the record numbers as they are stored (ascending keys).
void WriteOrders(const std::string& base, const dbf::cdx::IndexContext& context) {
    dbf::cdx::CdxFile file(files::SystemFiles().Open(base + ".cdx", {}));
    for (const dbf::cdx::Finding& finding : dbf::cdx::CheckCdx(file, context)) {
        throw Error(ErrorKind::Internal, base + ".cdx: " + finding.Describe());
    }
    std::ofstream out(base + ".orders");
    for (const dbf::cdx::DirectoryEntry& entry : dbf::cdx::ReadTagDirectory(file)) {
        const dbf::cdx::OpenTag tag(file, entry, context);
        if (!tag.isUsable()) throw Error(ErrorKind::Internal, tag.description().reason);
        out << entry.name;
        dbf::cdx::TagCursor cursor = tag.MakeCursor();
        for (bool more = cursor.First(); more; more = cursor.Next())
            out << ' ' << cursor.record();
        out << '\n';
    }
}

std::vector<TagDefinition> TagsOf(const std::string& indexPath) {
    dbf::cdx::CdxFile file(files::SystemFiles().Open(indexPath, {}));
    std::vector<TagDefinition> tags;
    for (const dbf::cdx::DirectoryEntry& entry : dbf::cdx::ReadTagDirectory(file)) {
        const dbf::cdx::TagHeader header = file.Header(entry.header);
        tags.push_back({entry.name, header.key, header.filter, (header.options & dbf::cdx::kUnique) != 0,
                        (header.options & dbf::cdx::kCandidate) != 0, header.descending});
    }
    return tags;
}

void Rebuild(const std::string& samples, const std::string& table, const std::string& index,
             const std::string& base) {
    std::ifstream in(samples + "/" + table, std::ios::binary);
    std::ofstream(base + ".dbf", std::ios::binary) << in.rdbuf();
    PlainTable plain(base + ".dbf", base.substr(base.rfind('/') + 1));
    {
        const auto file = files::SystemFiles().Open(
            base + ".cdx", {files::Access::ReadWrite, files::Creation::CreateAlways});
        BuildCdx(*file, TagsOf(samples + "/" + index), plain.Context());
    }
    WriteOrders(base, plain.Context());
}

std::u16string RandomName(std::mt19937& random) {
    std::u16string name;
    name.push_back(static_cast<char16_t>(u'A' + random() % 26));
    for (std::uint32_t i = random() % 20; i > 0; --i)
        name.push_back(static_cast<char16_t>(u'a' + random() % 26));
    return name;
}

calendar::Date RandomDay(std::mt19937& random) {
    return calendar::FromJulianDay(2415386 + static_cast<std::int32_t>(random() % 50000));
}

void WritePeople(const std::string& base) {
    constexpr int kCount = 20000;
    std::mt19937 random(17);
    dbf::TableWriter table(files::SystemFiles(), base + ".dbf", dbf::Format::FoxPro2, 0x03,
                           {{"ID", 'N', 8, 0},
                            {"NAME", 'C', 30, 0},
                            {"PAY", 'N', 12, 2},
                            {"BORN", 'D', 8, 0},
                            {"ACTIVE", 'L', 1, 0},
                            {"CODE", 'C', 6, 0}});
    for (int i = 0; i < kCount; ++i) {
        table.SetNumber(0, i * 7919 % 100003);
        table.SetText(1, RandomName(random));
        if (random() % 20 != 0) table.SetDecimal(2, static_cast<std::int64_t>(random() % 20000000) - 5000000);
        if (random() % 20 != 0) table.SetDate(3, RandomDay(random));
        if (random() % 3 != 0) table.SetBoolean(4, random() % 2 == 0);
        table.SetText(5, RandomName(random).substr(0, 2));
        table.Append(random() % 15 == 0);
    }
    table.Close({{"ID", "ID", ""},
                 {"NAME", "NAME", ""},
                 {"UNAME", "UPPER(NAME)+DTOS(BORN)+STR(ID,8)", ""},
                 {"PAY", "PAY", ""},
                 {"BORN", "BORN", ""},
                 {"ACTIVE", "ACTIVE", ""},
                 {"LIVE", "NAME", ".NOT.DELETED()"},
                 {"CODE", "CODE", "", true},
                 {"IDC", "ID", "", false, true},
                 {"NAMEDESC", "NAME", "", false, false, true}});
    PlainTable plain(base + ".dbf", "people");
    WriteOrders(base, plain.Context());
}

void WriteValues(const std::string& base) {
    constexpr int kCount = 3000;
    std::mt19937 random(23);
    dbf::TableWriter table(files::SystemFiles(), base + ".dbf", dbf::Format::VisualFoxPro, 0x03,
                           {{"I", 'I', 4, 0},
                            {"B", 'B', 8, 2},
                            {"Y", 'Y', 8, 0},
                            {"T", 'T', 8, 0},
                            {"NN", 'I', 4, 0, true},
                            {"NC", 'C', 5, 0, true}});
    for (int i = 0; i < kCount; ++i) {
        table.SetInteger(0, static_cast<std::int32_t>(random()));
        table.SetNumber(1, (static_cast<double>(random()) - 2e9) / 256);
        table.SetDecimal(2, static_cast<std::int64_t>(random()) - 2000000000);
        table.SetDateTime(3, 2440000 + static_cast<std::int32_t>(random() % 30000),
                          static_cast<std::int32_t>(random() % 86400) * 1000);
        if (random() % 4 == 0) {
            table.SetNull(4);
            table.SetNull(5);
        } else {
            table.SetInteger(4, static_cast<std::int32_t>(random() % 100) - 50);
            table.SetText(5, RandomName(random).substr(0, 5));
        }
        table.Append();
    }
    table.Close(
        {{"I", "I", ""}, {"B", "B", ""}, {"Y", "Y", ""}, {"T", "T", ""}, {"NN", "NN", ""}, {"NC", "NC", ""}});
    PlainTable plain(base + ".dbf", "values");
    WriteOrders(base, plain.Context());
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fputs("usage: write_indexes SAMPLES OUT\n", stderr);
        return 2;
    }
    try {
        const std::string samples = arguments[1];
        const std::string out = arguments[2];
        WritePeople(out + "/people");
        WriteValues(out + "/values");
        Rebuild(samples, "xbase/orders.dbf", "xbase/orders.cdx", out + "/xorders");
        Rebuild(samples, "xbase/deep.dbf", "xbase/deep.cdx", out + "/deep");
        Rebuild(samples, "xbase/vfp.dbf", "xbase/vfp.cdx", out + "/vfp");
        Rebuild(samples, "public/orders.dbf", "public/orders.cdx", out + "/orders");
        Rebuild(samples, "public/orderdetails.dbf", "public/orderdetails.cdx", out + "/details");
        Rebuild(samples, "public/contacts.dbf", "public/contacts.CDX", out + "/contacts");
        Rebuild(samples, "public/expense reports.dbf", "public/expense reports.CDX", out + "/expenses");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "write_indexes: %s\n", error.what());
        return 1;
    }
    return 0;
}
