#pragma once

#include "host/technologies/Technology.h"
#include "portable/files/File.h"

namespace zu::dbf {

/// Table files of the xBase family. A database is a folder or a single table file; see FindTable.
class DbfTechnology final : public technologies::Technology {
public:
    /// `files` must outlive the technology and the tables it opens.
    DbfTechnology(files::FileSystem& files, technologies::TechnologySettings settings);

    const std::string& name() const noexcept override { return name_; }
    std::unique_ptr<technologies::Table> OpenTable(std::string_view database,
                                                   std::string_view table) override;

    /// Texts: each byte of the settings' code page complemented. Numbers and logicals: negated. Dates: the
    /// number 5231808 minus the Julian day, as Clipper and FoxPro keep them (a time counts as the fraction of
    /// a day). Null stays Null. InvalidArgument for a text with a character that the code page lacks.
    technologies::Value Descend(const technologies::Value& value) override;

    std::vector<std::string> TableNames(std::string_view database) override;
    void CreateTable(std::string_view database, std::string_view table,
                     const std::vector<technologies::FieldDescription>& fields,
                     const std::vector<technologies::IndexField>& key) override;
    void DropTable(std::string_view database, std::string_view table) override;
    std::uint32_t Pack(std::string_view database, std::string_view table,
                       technologies::Progress* progress) override;
    void Zap(std::string_view database, std::string_view table) override;
    void CreateIndex(std::string_view database, std::string_view table,
                     const std::vector<technologies::IndexField>& key,
                     technologies::Progress* progress) override;
    void DropIndex(std::string_view database, std::string_view table, std::string_view index) override;
    void Reindex(std::string_view database, std::string_view table,
                 technologies::Progress* progress) override;
    technologies::CheckReport Check(std::string_view database, std::string_view table,
                                    technologies::Progress* progress) override;
    std::vector<std::string> Repair(std::string_view database, std::string_view table,
                                    technologies::Progress* progress) override;

private:
    std::string PathOf(std::string_view database, std::string_view table);

    files::FileSystem& files_;
    technologies::TechnologySettings settings_;
    std::string name_ = "DBF";
};

}  // namespace zu::dbf
