#include "host/service/DatabaseService.h"

#include <string>
#include <utility>
#include <vector>

#include "com/Bstr.h"
#include "com/Variant.h"
#include "host/engine/EngineState.h"
#include "host/engine/Reporting.h"
#include "host/service/DataFieldList.h"
#include "host/service/DataTable.h"
#include "host/service/DescendingValue.h"
#include "host/service/IndexFields.h"
#include "host/service/TableOpener.h"
#include "host/service/TableReuse.h"
#include "host/service/TableWork.h"
#include "host/service/TechnologyCatalogue.h"
#include "host/service/TextArray.h"
#include "host/service/UndeleteRecords.h"
#include "host/service/ViewAccess.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

std::wstring_view TextAt(BSTR* text) noexcept {
    return text ? com::View(*text) : std::wstring_view();
}

/// The members of a service of tables answer True when they are through.
template <class Body>
HRESULT Done(VARIANT_BOOL* result, Body&& body) noexcept {
    return GuardedResult(
        result,
        [&] {
            body();
            return VARIANT_TRUE;
        },
        Audience::User);
}

/// As Done; what is not there is no failure worth an error: the answer is False. `audience` is told why.
template <class Body>
HRESULT DoneIfFound(VARIANT_BOOL* result, Audience audience, Body&& body) noexcept {
    return GuardedResult(
        result,
        [&] {
            try {
                body();
                return VARIANT_TRUE;
            } catch (const Error& error) {
                if (error.kind() != ErrorKind::NotFound) throw;
                ReportCurrentException(audience);
                return VARIANT_FALSE;
            }
        },
        Audience::User);
}

std::string ShownKey(const std::vector<technologies::IndexField>& key) {
    std::string shown = "\"";
    for (const technologies::IndexField& field : key)
        shown += (shown.size() > 1 ? " + " : "") + field.text;
    return shown + "\"";
}

}  // namespace

HRESULT DatabaseService::Technologies(VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] { return TextArray(TechnologyCatalogue::Names()).detach(); });
}

HRESULT DatabaseService::TableNames(BSTR Database, VARIANT* Result) noexcept {
    return GuardedResult(
        Result,
        [&] {
            TableWork work("list the tables", com::View(Database), {});
            return TextArray(work.Run([&] { return work.technology().TableNames(work.database()); }))
                .detach();
        },
        Audience::User);
}

HRESULT DatabaseService::TableExists(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] {
        try {
            OpenTableByName(com::View(Database), com::View(Table));
            return VARIANT_TRUE;
        } catch (const Error& error) {
            if (error.kind() == ErrorKind::NotFound) return VARIANT_FALSE;
            throw;
        }
    });
}

HRESULT DatabaseService::CloseTables() noexcept {
    return Guarded([&] { TableReuse::Instance().CloseIdle(); });
}

HRESULT DatabaseService::OpenTable(BSTR* Database, BSTR* Table, IDispatch** Result) noexcept {
    return GuardedResult(
        Result,
        [&] { return com::MakeObject<DataTable>(OpenTableByName(TextAt(Database), TextAt(Table))).detach(); },
        Audience::User);
}

HRESULT DatabaseService::Descend(VARIANT Value, BSTR Technology, VARIANT* Result) noexcept {
    return GuardedResult(
        Result,
        [&] {
            // Only the technology's name counts here, whatever database stands behind it.
            const DatabaseName name = SplitDatabaseName(std::wstring(com::View(Technology)) + L"|");
            return DescendingValue(Value, *MakeTechnology(name.technology)).detach();
        },
        Audience::User);
}

HRESULT DatabaseService::Pack(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept {
    return Done(Result, [&] {
        TableWork work("pack", com::View(Database), com::View(Table));
        work.RunAlone([&] { work.technology().Pack(work.database(), work.table(), work.progress()); });
    });
}

HRESULT DatabaseService::Undelete(BSTR Database, BSTR Table, BSTR Condition, VARIANT_BOOL* Result) noexcept {
    return Done(Result, [&] {
        const auto open = OpenTableByName(com::View(Database), com::View(Table));
        UndeleteRecords(open->table(), com::View(Condition));
    });
}

HRESULT DatabaseService::CreateTable(BSTR* Database, BSTR* Table, IDispatch* Layout, ::DataFieldList* Index,
                                     VARIANT_BOOL* Result) noexcept {
    return Done(Result, [&] {
        const auto layout = com::Share(Layout).as<ZuDataView>();
        const ViewFields fields = DescribeFields(*layout);
        const std::vector<technologies::IndexField> key = IndexFieldsOf(Index, fields);
        TableWork work("make", TextAt(Database), TextAt(Table));
        work.RunAlone([&] {
            work.technology().CreateTable(work.database(), work.table(), DescriptionsOf(fields), key);
        });
    });
}

HRESULT DatabaseService::DropTable(BSTR* Database, BSTR* Table, VARIANT_BOOL* Result) noexcept {
    return DoneIfFound(Result, Audience::Caller, [&] {
        TableWork work("remove", TextAt(Database), TextAt(Table));
        work.RunAlone([&] { work.technology().DropTable(work.database(), work.table()); });
    });
}

HRESULT DatabaseService::NewFieldList(::DataFieldList** Result) noexcept {
    return GuardedResult(Result, [&] { return com::MakeObject<DataFieldList>().detach(); });
}

HRESULT DatabaseService::CreateIndex(BSTR Database, BSTR Table, ::DataFieldList* Fields,
                                     VARIANT_BOOL* Result) noexcept {
    return Done(Result, [&] {
        ViewFields fields;
        if (NamesFieldsByNumber(Fields))
            fields = OpenTableByName(com::View(Database), com::View(Table))->shape()->fields;
        TableWork work("make the index of", com::View(Database), com::View(Table));
        const auto key = work.Run([&] { return IndexFieldsOf(Fields, fields); });
        work.RunAlone([&] {
            try {
                work.technology().CreateIndex(work.database(), work.table(), key, work.progress());
            } catch (const Error& error) {
                if (error.kind() != ErrorKind::Syntax) throw;
                throw Error(error.kind(), error.what() + std::string(", in the key ") + ShownKey(key),
                            error.position());
            }
        });
    });
}

HRESULT DatabaseService::DropIndex(BSTR Database, BSTR Table, BSTR Name, VARIANT_BOOL* Result) noexcept {
    return DoneIfFound(Result, Audience::User, [&] {
        const std::string name = text::ToUtf8(com::AsUtf16(com::View(Name)));
        TableWork work("remove the index " + name + " of", com::View(Database), com::View(Table));
        work.RunAlone([&] { work.technology().DropIndex(work.database(), work.table(), name); });
    });
}

HRESULT DatabaseService::Reindex(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept {
    return Done(Result, [&] {
        TableWork work("build the indexes of", com::View(Database), com::View(Table));
        work.RunAlone([&] { work.technology().Reindex(work.database(), work.table(), work.progress()); });
    });
}

HRESULT DatabaseService::Zap(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept {
    return Done(Result, [&] {
        TableWork work("empty", com::View(Database), com::View(Table));
        work.RunAlone([&] { work.technology().Zap(work.database(), work.table()); });
    });
}

HRESULT DatabaseService::Check(BSTR Database, BSTR Table, VARIANT* Result) noexcept {
    return GuardedResult(
        Result,
        [&] {
            TableWork work("check", com::View(Database), com::View(Table));
            const technologies::CheckReport report = work.RunAlone(
                [&] { return work.technology().Check(work.database(), work.table(), work.progress()); });
            return TextArray(report.findings).detach();
        },
        Audience::User);
}

HRESULT DatabaseService::Repair(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept {
    return Done(Result, [&] {
        TableWork work("repair", com::View(Database), com::View(Table));
        const std::vector<std::string> done = work.RunAlone(
            [&] { return work.technology().Repair(work.database(), work.table(), work.progress()); });
        Messages& messages = EngineState::Current().messages;
        for (const std::string& sentence : done)
            messages.Warn(com::AsWide(text::ToUtf16(sentence)));
    });
}

}  // namespace zu::host
