/* The place of every operation in its vtable, checked while compiling, for x64 and x86 alike: the C form of the
   generated headers shows the vtables as structures. Position n is the n-th operation after the seven of IDispatch. */
#define CINTERFACE
#define COBJMACROS
#include <stddef.h>

#include "idl/ZuDBFFunctions.h"
#include "idl/ZuParser.h"
#include "idl/Zuengine.h"

#define AT(Interface, position, operation)                                                                \
    _Static_assert(offsetof(Interface##Vtbl, operation) == (7 + (position) - 1) * sizeof(void *),             \
                   #Interface " " #operation)

AT(ZuProject, 1, Engine);

AT(ZuEngineContext, 5, SetContextItem);
AT(ZuEngineContext, 6, SaveContextItem);
AT(ZuEngineContext, 10, ContextItemHandle);
AT(ZuEngineContext, 13, ContextItem);
AT(ZuEngineContext, 15, Routine);
AT(ZuEngineContext, 16, CallRoutine);

AT(ZuEngineData, 1, ToBoolean);
AT(ZuEngineData, 8, NewRecordVariable);
AT(ZuEngineData, 9, DecimalPlaces);
AT(ZuEngineData, 12, DefaultTechnology);
AT(ZuEngineData, 13, RecordAdded);
AT(ZuEngineData, 14, DatabaseService);

AT(ZuEngineMessages, 1, Trace);
AT(ZuEngineMessages, 3, RaiseError);
AT(ZuEngineMessages, 4, MessageText);

AT(ZuEngineUserInterface, 1, OwnerWindow);

AT(ZuRecordVariable, 7, Initialise);
AT(ZuRecordVariable, 8, Reset);

AT(ZuDatabaseService, 5, OpenTable);
AT(ZuDatabaseService, 6, Descend);
AT(ZuDatabaseService, 7, Pack);
AT(ZuDatabaseService, 8, Undelete);
AT(ZuDatabaseService, 9, CreateTable);
AT(ZuDatabaseService, 10, DropTable);
AT(ZuDatabaseService, 11, NewFieldList);
AT(ZuDatabaseService, 12, CreateIndex);

AT(DataTable, 2, Layout);
AT(DataTable, 3, OpenIndex);
AT(DataTable, 4, CurrentIndex);
AT(DataTable, 5, Seek);
AT(DataTable, 8, Select);

AT(DataIndex, 6, KeyFields);

AT(DataKeyFields, 1, Item);
AT(DataKeyFields, 2, Count);

AT(DataKeyField, 1, get_Name);
AT(DataKeyField, 2, put_Value);
AT(DataKeyField, 3, get_Value);
AT(DataKeyField, 4, get_Type);
AT(DataKeyField, 5, get_Descending);
AT(DataKeyField, 6, get_Exact);
AT(DataKeyField, 7, put_Exact);

AT(DataFieldList, 1, Add);
AT(DataFieldList, 2, Count);
AT(DataFieldList, 3, Item);
AT(DataFieldList, 4, Descending);

AT(ZuDataView, 2, Update);
AT(ZuDataView, 3, get_Fields);
AT(ZuDataView, 4, get_Updateable);
AT(ZuDataView, 6, get_RecordCount);
AT(ZuDataView, 7, MoveFirst);
AT(ZuDataView, 9, MoveNext);
AT(ZuDataView, 12, get_Eof);
AT(ZuDataView, 13, get_AbsolutePosition);
AT(ZuDataView, 20, Delete);
AT(ZuDataView, 21, AddNew);
AT(ZuDataView, 23, get_CellValue);
AT(ZuDataView, 26, Move);

AT(ZuDataFields, 1, get_Item);
AT(ZuDataFields, 2, get_Count);

AT(ZuDataField, 1, get_Name);
AT(ZuDataField, 2, get_Value);
AT(ZuDataField, 3, put_Value);
AT(ZuDataField, 5, get_Type);
AT(ZuDataField, 7, get_DisplayWidth);
AT(ZuDataField, 9, get_Decimals);
AT(ZuDataField, 14, get_Size);
AT(ZuDataField, 15, get_Alignment);

AT(ZuParser, 1, put_Formula);
AT(ZuParser, 2, Evaluate);

AT(_Functions, 1, DbfOpen);
AT(_Functions, 2, DbfSelect);
AT(_Functions, 3, DbfLookup);
AT(_Functions, 4, DbfCount);
AT(_Functions, 5, DbfTop);
AT(_Functions, 6, DbfBottom);
AT(_Functions, 7, DbfRecNo);
AT(_Functions, 8, DbfFieldValue);
AT(_Functions, 9, Descend);
AT(_Functions, 10, DbfVarDeclare);
AT(_Functions, 11, DbfVarReset);
AT(_Functions, 12, DbfProcess);
AT(_Functions, 13, DbfReplace);
AT(_Functions, 14, DbfAddNew);
AT(_Functions, 15, DbfConditionalAddNew);
AT(_Functions, 16, DbfUpdate);
AT(_Functions, 17, DbfModify);
AT(_Functions, 18, DbfDelete);
AT(_Functions, 19, DbfUndelete);
AT(_Functions, 20, DbfCleanup);
AT(_Functions, 21, DbfFromDbf);
AT(_Functions, 22, DbfToDbf);
AT(_Functions, 23, DbfFromDbfCorresponding);
AT(_Functions, 24, DbfIndex);
AT(_Functions, 25, DbfToDel);
AT(_Functions, 26, DbfToFix);
AT(_Functions, 27, DbfToFile);
AT(_Functions, 28, DbfFromDel);
AT(_Functions, 29, DbfFromFix);
AT(_Functions, 30, DbfFromFile);
AT(_Functions, 31, DbfEdit);
AT(_Functions, 32, DbfPick);

AT(_ZuDbRef, 1, OpenIndex);
AT(_ZuDbRef, 2, CloseTable);
AT(_ZuDbRef, 3, Filter);
AT(_ZuDbRef, 4, Process);
AT(_ZuDbRef, 5, Lookup);

AT(_ZuDbfControl, 1, get_ImportFormats);
AT(_ZuDbfControl, 2, get_ExportFormats);
AT(_ZuExportFormats, 1, get_Count);
AT(_ZuExportFormats, 2, get_Item);
AT(_ZuExportFormats, 3, get_NewEnum);
AT(_ZuExportFormats, 4, AddFormat);
AT(_ZuImportFormats, 1, get_Count);
AT(_ZuImportFormats, 2, get_Item);
AT(_ZuImportFormats, 3, get_NewEnum);
AT(_ZuImportFormats, 4, AddFormat);
AT(_ZuExportFormat, 1, get_Name);
AT(_ZuExportFormat, 2, get_DateFormat);
AT(_ZuExportFormat, 57, put_OmitDecimalPoint);
AT(_ZuImportFormat, 1, get_Name);
AT(_ZuImportFormat, 2, get_BooleanLength);
AT(_ZuImportFormat, 21, put_Separator);

/* What crosses the vtable has the size that every client expects. */
_Static_assert(sizeof(VARIANT) == 8 + 2 * sizeof(void *), "VARIANT");
_Static_assert(sizeof(LONG) == 4 && sizeof(VARIANT_BOOL) == 2, "Long and Boolean");
