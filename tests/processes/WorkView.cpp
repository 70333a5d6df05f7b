#include "WorkView.h"

#include <stdexcept>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SafeArray.h"
#include "com/Variant.h"
#include "host/service/DatabaseService.h"
#include "idl/RecordRuns.h"

namespace zu::test {
namespace {

enum Field { kId, kName, kAmount, kBorn, kPaid, kNote, kCode, kFields };

com::Bstr DatabaseOf(std::wstring_view folder) {
    return com::Bstr(std::wstring(L"DBF|") + std::wstring(folder));
}

com::ComPtr<ZuDatabaseService> Service() {
    return com::ComPtr<ZuDatabaseService>::Adopt(com::MakeObject<host::DatabaseService>().detach());
}

std::wstring NameOf(LONG id, LONG version) {
    return std::to_wstring(id) + L"-" + std::to_wstring(version);
}

/// A text of a length that changes with the version, so that memos grow, shrink and move.
std::wstring NoteOf(LONG id, LONG version) {
    const auto length = static_cast<std::size_t>((id * 131 + version * 617) % 1500);
    std::wstring note;
    while (note.size() < length)
        note += NameOf(id, version) + L" ";
    note.resize(length);
    if (!note.empty()) note.back() = L'.';
    return note;
}

com::Variant DateOf(LONG id, LONG version) {
    com::Variant date(static_cast<double>(30000 + (id * 7 + version) % 9000));
    date.address()->vt = VT_DATE;
    return date;
}

/// What a member answers by its last argument.
template <class Call>
bool Answer(Call&& call) {
    VARIANT_BOOL value = VARIANT_FALSE;
    com::Check(call(&value));
    return value == VARIANT_TRUE;
}

}  // namespace

WorkView::WorkView(std::wstring_view folder) {
    com::Bstr database = DatabaseOf(folder);
    com::Bstr name(kWorkTable);
    com::ComPtr<IDispatch> opened;
    com::Check(Service()->OpenTable(database.address(), name.address(), opened.put()));
    table_ = opened.as<::DataTable>();
    com::ComPtr<IDispatch> view;
    com::Check(
        table_->Select(com::Variant(L""), com::Variant::Missing(), 1, com::Variant::Missing(), view.put()));
    view_ = view.as<ZuDataView>();
    com::ComPtr<ZuDataFields> fields;
    com::Check(view_->get_Fields(fields.put()));
    for (LONG i = 0; i < kFields; ++i) {
        com::ComPtr<ZuDataField> field;
        com::Check(fields->get_Item(com::Variant(i), field.put()));
        fields_.push_back(field);
    }
}

LONG WorkView::Count() const {
    LONG count = 0;
    com::Check(view_->get_RecordCount(0, &count));
    return count;
}

WorkRecord WorkView::Read(LONG index) {
    com::Check(view_->Move(index, 0));
    std::vector<com::Variant> values(kFields);
    for (std::size_t i = 0; i < kFields; ++i)
        com::Check(fields_[i]->get_Value(values[i].put()));
    WorkRecord record;
    record.deleted = Answer([&](VARIANT_BOOL* out) { return view_->get_IsDeleted(out); });
    record.id = values[kId].ToLong();
    const std::wstring name = values[kName].ToText().str();
    const auto dash = name.find(L'-');
    if (dash != std::wstring::npos) record.version = std::stol(name.substr(dash + 1));
    const std::wstring note = values[kNote].type() == VT_NULL ? std::wstring() : values[kNote].ToText().str();
    const bool whole = name == NameOf(record.id, record.version) &&
                       note == NoteOf(record.id, record.version) &&
                       values[kCode].ToText().view() == std::to_wstring(record.id % 1'000'000) &&
                       values[kBorn].ToDouble() == DateOf(record.id, record.version).ToDouble() &&
                       values[kPaid].ToBoolean() == (record.version % 2 == 1);
    if (!whole) throw std::runtime_error("record " + std::to_string(index + 1) + " is torn");
    return record;
}

void WorkView::Put(int field, const VARIANT& value) {
    com::Check(fields_[static_cast<std::size_t>(field)]->put_Value(value));
}

bool WorkView::Save(LONG id, LONG version) {
    Put(kId, com::Variant(id));
    Put(kName, com::Variant(NameOf(id, version)));
    Put(kBorn, DateOf(id, version));
    Put(kPaid, com::Variant(version % 2 == 1));
    Put(kNote, com::Variant(NoteOf(id, version)));
    Put(kCode, com::Variant(std::to_wstring(id % 1'000'000)));
    return Answer([&](VARIANT_BOOL* out) { return view_->Update(out); });
}

bool WorkView::Append(LONG id, LONG version) {
    return Answer([&](VARIANT_BOOL* out) { return view_->AddNew(nullptr, out); }) && Save(id, version);
}

void WorkView::BeginBatch() {
    UINT codePage = 0;
    com::Check(view_.as<RecordBatch>()->BeginBatch(&codePage));
}

void WorkView::EndBatch() {
    ULONG lost = 0;
    com::Check(view_.as<RecordBatch>()->EndBatch(&lost));
}

bool WorkView::Change(LONG index, LONG id, LONG version) {
    com::Check(view_->Move(index, 0));
    return Save(id, version);
}

bool WorkView::Mark(LONG index, bool deleted) {
    return Answer(
        [&](VARIANT_BOOL* out) { return deleted ? view_->Delete(index, out) : view_->Undelete(index, out); });
}

LONG WorkView::Counter(LONG index) {
    com::Check(view_->Move(index, 0));
    com::Variant value;
    com::Check(fields_[kAmount]->get_Value(value.put()));
    return value.ToLong();
}

int WorkView::CountUp(LONG index) {
    constexpr int kMostTries = 100'000;
    constexpr int kTurns = 30;
    for (int lost = 0; lost < kMostTries; ++lost) {
        const LONG counter = Counter(index);
        // The others get their turn just where it matters.
        for (int turn = 0; turn < kTurns; ++turn)
            SwitchToThread();
        Put(kAmount, com::Variant(counter + 1));
        if (Answer([&](VARIANT_BOOL* out) { return view_->Update(out); })) return lost;
    }
    throw std::runtime_error("the counter could not be changed");
}

std::vector<std::wstring> WorkView::Check(std::wstring_view folder) {
    const com::Bstr database = DatabaseOf(folder);
    const com::Bstr name(kWorkTable);
    com::Variant findings;
    com::Check(Service()->Check(database.get(), name.get(), findings.put()));
    std::vector<std::wstring> texts;
    for (const com::Variant& finding : com::ReadArguments(findings.get().parray))
        texts.push_back(finding.ToText().str());
    return texts;
}

}  // namespace zu::test
