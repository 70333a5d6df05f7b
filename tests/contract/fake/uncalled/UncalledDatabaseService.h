#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuDatabaseService with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledDatabaseService : public ZuDatabaseService {
public:
    using Interface = ZuDatabaseService;

    STDMETHODIMP Technologies(VARIANT*) override { return Unexpected("ZuDatabaseService.Technologies"); }
    STDMETHODIMP TableNames(BSTR, VARIANT*) override { return Unexpected("ZuDatabaseService.TableNames"); }
    STDMETHODIMP TableExists(BSTR, BSTR, VARIANT_BOOL*) override {
        return Unexpected("ZuDatabaseService.TableExists");
    }
    STDMETHODIMP CloseTables() override { return Unexpected("ZuDatabaseService.CloseTables"); }
    STDMETHODIMP OpenTable(BSTR*, BSTR*, IDispatch**) override {
        return Unexpected("ZuDatabaseService.OpenTable");
    }
    STDMETHODIMP Descend(VARIANT, BSTR, VARIANT*) override { return Unexpected("ZuDatabaseService.Descend"); }
    STDMETHODIMP Pack(BSTR, BSTR, VARIANT_BOOL*) override { return Unexpected("ZuDatabaseService.Pack"); }
    STDMETHODIMP Undelete(BSTR, BSTR, BSTR, VARIANT_BOOL*) override {
        return Unexpected("ZuDatabaseService.Undelete");
    }
    STDMETHODIMP CreateTable(BSTR*, BSTR*, IDispatch*, DataFieldList*, VARIANT_BOOL*) override {
        return Unexpected("ZuDatabaseService.CreateTable");
    }
    STDMETHODIMP DropTable(BSTR*, BSTR*, VARIANT_BOOL*) override {
        return Unexpected("ZuDatabaseService.DropTable");
    }
    STDMETHODIMP NewFieldList(DataFieldList**) override {
        return Unexpected("ZuDatabaseService.NewFieldList");
    }
    STDMETHODIMP CreateIndex(BSTR, BSTR, DataFieldList*, VARIANT_BOOL*) override {
        return Unexpected("ZuDatabaseService.CreateIndex");
    }
    STDMETHODIMP DropIndex(BSTR, BSTR, BSTR, VARIANT_BOOL*) override {
        return Unexpected("ZuDatabaseService.DropIndex");
    }
    STDMETHODIMP Reindex(BSTR, BSTR, VARIANT_BOOL*) override {
        return Unexpected("ZuDatabaseService.Reindex");
    }
    STDMETHODIMP Zap(BSTR, BSTR, VARIANT_BOOL*) override { return Unexpected("ZuDatabaseService.Zap"); }
    STDMETHODIMP Check(BSTR, BSTR, VARIANT*) override { return Unexpected("ZuDatabaseService.Check"); }
    STDMETHODIMP Repair(BSTR, BSTR, VARIANT_BOOL*) override { return Unexpected("ZuDatabaseService.Repair"); }
};

}  // namespace zu::fake
