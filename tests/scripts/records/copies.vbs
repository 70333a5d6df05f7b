' Copies from table to table, and indexes.
Option Explicit

Dim f, source, folder, rows, added, failed, count, view
folder = fact("scratch")
source = folder & ">customers"
Set f = CreateObject("ZuDBFFunctions.Functions")

same f.DbfToDbf(source, folder & ">swedes", "COUNTRY = 'SE'", , , rows, added, failed), True, "DbfToDbf makes a new table"
count = f.DbfCount(source, "COUNTRY = 'SE'")
same rows, count, "every matching row was visited"
same added, count, "and added"
same TypeName(failed), "Empty", "none failed"
same f.DbfCount(folder & ">swedes"), count, "they are all there"
Set view = f.DbfSelect(source, "COUNTRY = 'SE'")
view.MoveFirst
same f.DbfLookup(folder & ">swedes", view("ID").Value)("NAME").Value, view("NAME").Value, "the copy has the source's index"
same f.DbfFieldValue(f.DbfLookup(folder & ">swedes", view("ID").Value)("CREDIT")), f.DbfFieldValue(view("CREDIT")), "and its values"
Set view = Nothing

same f.DbfToDbf(source, folder & ">swedes", "COUNTRY = 'SE'", "ID,NAME", 3, rows), True, "an old table of the name is replaced"
same f.DbfCount(folder & ">swedes"), 3, "by the new rows"
same rows, 3, "as many as were asked for"
same f.DbfSelect(folder & ">swedes").Fields.Count, 2, "with the fields that were asked for"

same f.DbfFromDbf(folder & ">swedes", source, "COUNTRY = 'DK'", "ID,CITY", 2, , rows, added, failed), True, "DbfFromDbf appends by position"
same rows & " " & added, "2 2", "the rows that were asked for"
Set view = f.DbfSelect(folder & ">swedes")
view.Move 3
ok f.DbfCount(source, "ID = " & view("ID").Value & " AND CITY = '" & Replace(view("NAME").Value, "'", "''") & "'") = 1, "the second field went into the second field"
Set view = Nothing

same f.DbfFromDbfCorresponding(folder & ">swedes", source, "COUNTRY = 'DE'", "CITY,NAME,ID", 2, , rows, added, failed), True, "DbfFromDbfCorresponding appends by name"
same added, 2, "the rows that were asked for"
Set view = f.DbfSelect(folder & ">swedes")
view.Move 5
ok f.DbfCount(source, "ID = " & view("ID").Value & " AND NAME = '" & Replace(view("NAME").Value, "'", "''") & "'") = 1, "each field went to its namesake"
Set view = Nothing

same f.DbfFromDbfCorresponding(folder & ">swedes", source, "COUNTRY = 'DE'", "CITY,STREET", 2, , rows, added, failed), True, "rows without a namesake"
same rows & " " & added, "2 0", "are visited and not added"
same failed(0) & "," & failed(1), "1,2", "and listed"

same f.DbfFromDbf(folder & ">swedes", folder & ">nosuch", , , , , rows, added, failed), False, "a source that does not exist is False"
same rows & " " & added & " " & TypeName(failed), "0 0 Empty", "with nothing visited"
same f.DbfFromDbf(folder & ">nosuch", source, , , , , rows, added), False, "so is a destination"

same f.DbfIndex(folder & ">swedes", Array("NAME", "DbfRecno")), True, "DbfIndex builds an index"
Set view = f.DbfLookup(folder & ">swedes", f.DbfSelect(folder & ">swedes")("NAME").Value)
same view.RecordCount, 1, "which lookups use"
Set view = Nothing
same f.DbfIndex(folder & ">swedes", Array("NOSUCH")), False, "an unknown field is False"
same f.DbfIndex(folder & ">nosuch", Array("NAME")), False, "and a table that does not exist"

finish
