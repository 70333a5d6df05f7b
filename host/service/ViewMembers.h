#pragma once

#include <memory>
#include <string>
#include <utility>

#include "com/Bstr.h"
#include "com/Object.h"
#include "host/engine/Reporting.h"
#include "host/service/DataFields.h"
#include "host/service/ValueConversion.h"
#include "host/service/ViewCursor.h"
#include "idl/ZuDataViewInterface.h"

namespace zu::host {

/// A further view over the records of `cursor`, with a position of its own.
com::ComPtr<ZuDataView> CloneView(const ViewCursor& cursor);

/// The view that AddNew takes values from; none when the argument is left out or empty. Anything else is a
/// type mismatch, and Nothing the error for an object that is not set.
com::ComPtr<ZuDataView> ValuesArgument(const VARIANT* values);

/// Tells the user why a record was not saved.
void ReportUnsaved(const std::string& reason);

/// The members of ZuDataView over a cursor, for every class that is a view. `Base` is the class's DualObject
/// with ZuDataView as its primary interface.
template <class Base>
class ViewMembers : public Base {
public:
    explicit ViewMembers(std::shared_ptr<ViewCursor> cursor) { Show(std::move(cursor)); }

    static void adjustDispatchResult(VARIANT& result) noexcept { MakeUsableForScripts(result); }

    HRESULT STDMETHODCALLTYPE get_Item(VARIANT Index, ZuDataField** Result) noexcept override {
        return GuardedResult(Result, [&] { return fields()->Get(Index).copy(); });
    }
    HRESULT STDMETHODCALLTYPE Update(VARIANT_BOOL* Result) noexcept override {
        return GuardedResult(
            Result, [&] { return SaveCurrent(); }, Audience::User);
    }
    HRESULT STDMETHODCALLTYPE get_Fields(ZuDataFields** Result) noexcept override {
        return GuardedResult(Result, [&] { return fields().copy(); });
    }
    HRESULT STDMETHODCALLTYPE get_Updateable(VARIANT_BOOL* Result) noexcept override {
        return GuardedResult(Result, [&] { return com::ToVariantBool(records().isUpdateable()); });
    }
    HRESULT STDMETHODCALLTYPE get_TableName(BSTR* Result) noexcept override {
        return GuardedResult(Result, [&] { return com::NewBstr(records().tableName()); });
    }
    HRESULT STDMETHODCALLTYPE get_RecordCount(LONG, LONG* Result) noexcept override {
        return GuardedResult(Result, [&] { return cursor_->Count(); });
    }
    HRESULT STDMETHODCALLTYPE MoveFirst(LONG) noexcept override {
        return Guarded([&] { cursor_->MoveFirst(); });
    }
    HRESULT STDMETHODCALLTYPE MoveLast(LONG) noexcept override {
        return Guarded([&] { cursor_->MoveLast(); });
    }
    HRESULT STDMETHODCALLTYPE MoveNext(LONG Count) noexcept override {
        return Guarded([&] { cursor_->MoveNext(Count); });
    }
    HRESULT STDMETHODCALLTYPE MovePrevious(LONG Count) noexcept override {
        return Guarded([&] { cursor_->MovePrevious(Count); });
    }
    HRESULT STDMETHODCALLTYPE get_Bof(LONG, VARIANT_BOOL* Result) noexcept override {
        return GuardedResult(Result, [&] { return com::ToVariantBool(cursor_->IsBeforeFirst()); });
    }
    HRESULT STDMETHODCALLTYPE get_Eof(LONG, VARIANT_BOOL* Result) noexcept override {
        return GuardedResult(Result, [&] { return com::ToVariantBool(cursor_->IsPastLast()); });
    }
    HRESULT STDMETHODCALLTYPE get_AbsolutePosition(LONG, LONG* Result) noexcept override {
        return GuardedResult(Result, [&] { return cursor_->position(); });
    }
    HRESULT STDMETHODCALLTYPE get_RecordNumber(LONG* Result) noexcept override {
        return GuardedResult(Result, [&] { return static_cast<LONG>(cursor_->RecordNumber()); });
    }
    HRESULT STDMETHODCALLTYPE get_IsDirty(VARIANT_BOOL* Result) noexcept override {
        return GuardedResult(Result, [&] { return com::ToVariantBool(cursor_->isDirty()); });
    }
    HRESULT STDMETHODCALLTYPE get_IsNew(VARIANT_BOOL* Result) noexcept override {
        return GuardedResult(Result, [&] { return com::ToVariantBool(cursor_->isNew()); });
    }
    HRESULT STDMETHODCALLTYPE get_IsDeleted(VARIANT_BOOL* Result) noexcept override {
        return GuardedResult(Result, [&] { return com::ToVariantBool(cursor_->IsDeleted()); });
    }
    HRESULT STDMETHODCALLTYPE CancelUpdate() noexcept override {
        return Guarded([&] { cursor_->CancelUpdate(); });
    }
    HRESULT STDMETHODCALLTYPE Undelete(LONG Index, VARIANT_BOOL* Result) noexcept override {
        return GuardedResult(
            Result, [&] { return Mark(Index, false); }, Audience::User);
    }
    HRESULT STDMETHODCALLTYPE Delete(LONG Index, VARIANT_BOOL* Result) noexcept override {
        return GuardedResult(
            Result, [&] { return Mark(Index, true); }, Audience::User);
    }
    HRESULT STDMETHODCALLTYPE AddNew(VARIANT* Values, VARIANT_BOOL* Result) noexcept override {
        return GuardedResult(
            Result,
            [&] {
                const com::ComPtr<ZuDataView> values = ValuesArgument(Values);
                return com::ToVariantBool(cursor_->AddNew(values.get()));
            },
            Audience::User);
    }
    HRESULT STDMETHODCALLTYPE Refresh() noexcept override {
        return Guarded([&] { cursor_->Refresh(); });
    }
    HRESULT STDMETHODCALLTYPE get_CellValue(LONG Index, LONG Column, VARIANT* Result) noexcept override {
        return GuardedResult(Result, [&] {
            const std::size_t field = cursor_->Locate(com::Variant(Column));
            return cursor_->Read(Index, field).detach();
        });
    }
    HRESULT STDMETHODCALLTYPE Clone(ZuDataView** Result) noexcept override {
        return GuardedResult(Result, [&] { return CloneView(*cursor_).detach(); });
    }
    HRESULT STDMETHODCALLTYPE Close() noexcept override {
        return Guarded([&] { cursor_->Close(); });
    }
    HRESULT STDMETHODCALLTYPE Move(LONG Index, LONG) noexcept override {
        return Guarded([&] { cursor_->Move(Index); });
    }

protected:
    /// Makes the object a view of other records.
    void Show(std::shared_ptr<ViewCursor> cursor) {
        fields_ = {};
        cursor_ = std::move(cursor);
    }
    const std::shared_ptr<ViewCursor>& cursor() const noexcept { return cursor_; }
    const com::ComPtr<DataFields>& fields() {
        if (!fields_) fields_ = com::MakeObject<DataFields>(cursor_);
        return fields_;
    }

private:
    RecordSet& records() const noexcept { return *cursor_->records(); }

    VARIANT_BOOL Mark(LONG index, bool deleted) {
        return com::ToVariantBool(cursor_->SetDeleted(index, deleted));
    }

    VARIANT_BOOL SaveCurrent() {
        std::string whyNot;
        if (cursor_->Update(whyNot)) return VARIANT_TRUE;
        ReportUnsaved(whyNot);
        return VARIANT_FALSE;
    }

    std::shared_ptr<ViewCursor> cursor_;
    com::ComPtr<DataFields> fields_;  ///< once it was asked for
};

}  // namespace zu::host
