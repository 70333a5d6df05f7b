#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/engine/JobReport.h"
#include "host/service/TableOpener.h"
#include "host/technologies/Maintenance.h"
#include "host/technologies/Technology.h"
#include "portable/error/Error.h"

namespace zu::host {

/// Work on a database or a table as a whole, by the names that callers pass. Failures get the names in front.
class TableWork {
public:
    /// `what` completes "Cannot ... table": "pack". Without a table the work concerns the database.
    /// NotFound for an unknown technology.
    TableWork(std::string what, std::wstring_view database, std::wstring_view table);

    technologies::Technology& technology() const noexcept { return *technology_; }
    const std::string& database() const noexcept { return name_.database; }
    const std::string& table() const noexcept { return table_; }
    /// Tells the listener how far the work is.
    technologies::Progress* progress() noexcept { return &report_; }

    /// Answers what `body` answers.
    template <class Body>
    auto Run(Body&& body) const {
        try {
            return std::forward<Body>(body)();
        } catch (const Error& error) {
            Explain(error);
        }
    }
    /// As Run, for work that needs the table alone: tables that are only kept for the next use are let go.
    template <class Body>
    auto RunAlone(Body&& body) const {
        LetGoIdleTables();
        return Run(std::forward<Body>(body));
    }

private:
    static void LetGoIdleTables();
    [[noreturn]] void Explain(const Error& error) const;

    std::string what_;
    DatabaseName name_;
    std::string table_;
    std::unique_ptr<technologies::Technology> technology_;
    JobReport report_;
};

}  // namespace zu::host
