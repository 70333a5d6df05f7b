' The functions that read, on real tables, as VBScript calls them.
Option Explicit

Dim f, tables, customers, orders, view, table, field, count, sum, names
Set f = CreateObject("ZuDBFFunctions.Functions")
tables = fact("tables")
customers = tables & ">customers"
orders = tables & ">orders"

' --- DbfOpen
Set table = f.DbfOpen(customers)
ok Not table Is Nothing, "DbfOpen opens a table"
ok f.DbfOpen(tables & ">nosuch") Is Nothing, "DbfOpen of a missing table answers Nothing"
ok f.DbfOpen(42) Is Nothing, "DbfOpen of a number answers Nothing"
ok table.OpenIndex("NAME"), "OpenIndex finds a tag"
ok Not table.OpenIndex("NOSUCH"), "OpenIndex of an unknown tag answers False"
table.CloseTable
ok table.Filter("") Is Nothing, "a closed table selects nothing"

' --- DbfCount
same f.DbfCount(customers), fact("customers"), "DbfCount counts the whole table"
same f.DbfCount(customers, "COUNTRY = 'SE'"), fact("swedish"), "DbfCount counts by condition"
same f.DbfCount(customers, "ACTIVE"), fact("active"), "a logical field is a condition of its own"
same f.DbfCount(customers, "COUNTRY = 'XX'"), 0, "DbfCount of nothing is 0"
same f.DbfCount(tables & ">nosuch"), -1, "DbfCount of a missing table is -1"
same f.DbfCount(customers, "COUNTRY ="), -1, "DbfCount with a faulty condition is -1"
same f.DbfCount(Array(tables & "\customers")), fact("customers"), "an array of one element names a database"
same f.DbfCount(Array(tables & "\customers", "x")), fact("customers"), "an array of two elements names a database"
same f.DbfCount(Array("DBF", tables & "\customers", "x")), fact("customers"), "an array of three elements names technology and database"
same f.DbfCount("DBF|" & customers), fact("customers"), "a technology may stand in front"
same f.DbfCount("NOSUCH|" & customers), -1, "an unknown technology opens nothing"

' --- DbfSelect
Set view = f.DbfSelect(customers)
same view.RecordCount, fact("customers"), "DbfSelect selects the whole table"
Set view = f.DbfSelect(customers, "COUNTRY = 'SE'", "ID,COUNTRY")
same view.RecordCount, fact("swedish"), "DbfSelect selects by condition"
same view.Fields.Count, 2, "FieldNames names the fields of the view"
sum = 0
count = 0
view.MoveFirst
Do Until view.Eof
    sum = sum + CLng(view("ID").Value)
    count = count + 1
    view.MoveNext
Loop
same count, fact("swedish"), "a walk with MoveFirst, Eof and MoveNext meets every record"
same sum, fact("swedishIdSum"), "and reads the right values"
Set view = f.DbfSelect(customers, "", "", 5)
same view.RecordCount, 5, "MaxRecords limits the selection"
Set view = f.DbfSelect(customers, , , 7)
same view.RecordCount, 7, "arguments in the middle can be left out"
Set view = f.DbfSelect(customers, , Array("NAME", "CITY", "ID"), 1)
same view.Fields(2).Name, "ID", "FieldNames may be an array of names"
Set view = f.DbfSelect(customers, , Array(1, 0), 1)
same view.Fields(0).Name, "NAME", "FieldNames may be an array of numbers"
ok f.DbfSelect(customers, "NOSUCHFIELD = 1") Is Nothing, "an unknown field in the condition gives no view"
ok f.DbfSelect(customers, "", "ID,NOSUCHFIELD") Is Nothing, "an unknown field name gives no view"

' --- fields and values
Set view = f.DbfSelect(customers, "", "", 1)
view.MoveFirst
same view("ID").Value, fact("firstId"), "view(name).Value reads a field"
same view("id"), fact("firstId"), "names of fields have no case and Value is the default member"
same view(0).Value, fact("firstId"), "fields have numbers from 0"
same view.Fields("NAME").Value, fact("firstName"), "texts come without trailing blanks"
names = ""
For Each field In view.Fields
    names = names & field.Name & " "
Next
same names, "ID NAME CONTACT STREET POSTCODE CITY COUNTRY SINCE CREDIT ACTIVE ", "For Each walks over the fields"
same view("NAME").Size, 40, "Size is the width of the field"
same view("CREDIT").Decimals, 2, "Decimals is the number of decimals"
same view("SINCE").Type, 7, "a date field has type 7"
same view("ACTIVE").Type, 11, "a logical field has type 11"
same VarType(view("SINCE").Value), 7, "a date is a date"
same VarType(view("ACTIVE").Value), 11, "a truth value is a truth value"
same TypeName(view("NAME").Value), "String", "a text is a text"

' --- positions
Set view = f.DbfSelect(customers, "COUNTRY = 'SE'", "", 3)
view.MoveFirst
ok f.DbfTop(view), "DbfTop on the first record"
ok Not f.DbfBottom(view), "DbfBottom not on the first of three"
view.MoveNext
ok Not f.DbfTop(view), "DbfTop not on the second record"
view.MoveNext
ok f.DbfBottom(view), "DbfBottom on the last record"
same f.DbfRecNo(view), view("##RECNO").Value, "DbfRecNo is the record's number in the table"
ok f.DbfRecNo(view) >= 3, "which counts all records from 1"
ok Not f.DbfTop(42), "DbfTop of something else is False"
same f.DbfRecNo("x"), 0, "DbfRecNo of something else is 0"
ok Not f.DbfTop(), "DbfTop without a view and without a process is False"

' --- DbfLookup
Set view = f.DbfLookup(customers, fact("lastId") + 0)
same view.RecordCount, 1, "DbfLookup finds a key of the default index"
same view("ID").Value, fact("lastId"), "and it is the right record"
Set view = f.DbfLookup(customers, "CREDIT >= " & fact("richest"))
same view.RecordCount, 1, "a key with a comparison is a condition"
same CDbl(view("CREDIT").Value), CDbl(fact("richest")), "which selects"
Set view = f.DbfLookup(customers, -5)
same view.RecordCount, 0, "a key that is not there gives an empty view"
Set view = f.DbfLookup(customers)
same view.RecordCount, 1, "without a key DbfLookup takes one record"
Set view = f.DbfLookup(customers, "COUNTRY = 'SE'", , , 4)
same view.RecordCount, 4, "MaxRecords of DbfLookup limits"
Set view = f.DbfLookup(customers, fact("firstId") + 0, True, "NAME")
same view.Fields.Count, 1, "FieldNames of DbfLookup names the fields"
Set view = f.DbfLookup(customers, Array(fact("firstId") + 0, True))
same view("ID").Value, fact("firstId"), "a key may be an array of values and exactness"
ok f.DbfLookup(tables & ">nosuch", 1) Is Nothing, "DbfLookup of a missing table answers Nothing"

' --- the key of a text index: prefix and exact
Set table = f.DbfOpen(customers)
ok table.OpenIndex("NAME"), "the index of names is there"
Set view = table.Lookup(UCase(Left(fact("firstName"), 3)), False)
ok view.RecordCount >= 1, "a key that is not exact finds by its beginning"
same table.Lookup(Left(fact("firstName"), 3) & "#", True).RecordCount, 0, "an exact key needs the whole text"

' --- index order
ok table.OpenIndex("CREDIT"), "the descending index is there"
Set view = table.Filter("", 2)
view.MoveFirst
same CDbl(view("CREDIT").Value), CDbl(fact("richest")), "with an open index the records come in its order"

finish
