#include "host/technologies/Technology.h"

#include "portable/error/Error.h"

namespace zu::technologies {

std::vector<std::string> Technology::TableNames(std::string_view) {
    RefuseWork("List the tables");
}

void Technology::CreateTable(std::string_view, std::string_view, const std::vector<FieldDescription>&,
                             const std::vector<IndexField>&) {
    RefuseWork("Make a table");
}

void Technology::DropTable(std::string_view, std::string_view) {
    RefuseWork("Remove a table");
}

std::uint32_t Technology::Pack(std::string_view, std::string_view, Progress*) {
    RefuseWork("Pack a table");
}

void Technology::Zap(std::string_view, std::string_view) {
    RefuseWork("Empty a table");
}

void Technology::CreateIndex(std::string_view, std::string_view, const std::vector<IndexField>&, Progress*) {
    RefuseWork("Make an index");
}

void Technology::DropIndex(std::string_view, std::string_view, std::string_view) {
    RefuseWork("Remove an index");
}

void Technology::Reindex(std::string_view, std::string_view, Progress*) {
    RefuseWork("Build indexes anew");
}

CheckReport Technology::Check(std::string_view, std::string_view, Progress*) {
    RefuseWork("Check a table");
}

std::vector<std::string> Technology::Repair(std::string_view, std::string_view, Progress*) {
    RefuseWork("Repair a table");
}

void Technology::RefuseWork(const char* work) const {
    throw Error(ErrorKind::Unsupported,
                std::string(work) + ": the technology " + name() + " cannot do this.");
}

}  // namespace zu::technologies
