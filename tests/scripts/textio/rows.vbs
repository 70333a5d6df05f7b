' Imports and copies that add whole rows give what those that go field by field give. A condition makes an import look at
' every field.
Option Explicit

Dim f, folder, tables, fso, service, text, number, line, orders
folder = fact("scratch")
tables = fact("tables")
orders = tables & ">orders"
Set f = CreateObject("ZuDBFFunctions.Functions")
Set fso = CreateObject("Scripting.FileSystemObject")
Set service = CreateObject("Zuengine.Zuproject").DatabaseService

Function content(path)
    content = ""
    If fso.GetFile(path).Size > 0 Then content = fso.OpenTextFile(path).ReadAll
End Function

Function emptyTable(name)
    emptyTable = folder & ">" & name
    service.CreateTable "DBF|" & folder, name, service.OpenTable("DBF|" & tables, "orders").Layout, Nothing
End Function

' Everything that a table holds, as text.
Function everything(table)
    everything = ""
    If f.DbfToDel(table, folder & "\all.del") Then everything = content(folder & "\all.del")
End Function

Function listed(rows)
    Dim i
    For i = 0 To UBound(rows)
        listed = listed & rows(i) & ","
    Next
End Function

' One of a few words for the field that has number `column` in line `number`.
Function pick(words, column)
    pick = words((number * 7 + column * 13 + number \ 5) Mod (UBound(words) + 1))
End Function

' ---- imports ----
Dim ids, names, dates, amounts, truths, notes
ids = Array("1", " 22 ", "-3", "+4", "5.5", "1e2", "99999999999", "", "abc", "1,5", "12345678")
names = Array("""plain""", """with """"quotes"""" inside""", "bare", """  blanks  """, """""", """" & String(200, "w") & """", _
              """caf" & Chr(233) & """", """" & Chr(129) & """", """a,b""")
dates = Array("20240229", "20240230", "", "        ", "nonsense", "19991231", "2024-01-01")
amounts = Array("1.005", "-1.005", ".5", "1234567.89", "0", "12345678901234567", "1.5e3", "x", "", "-0.004", "99999999999999")
truths = Array("T", "F", "True", "False", "Yes", "no", "1", "0", "maybe", "", "-1")
notes = Array("""short""", """" & String(300, "n") & """", """""", """caf" & Chr(233) & """")
Dim view, i
Set view = service.OpenTable("DBF|" & tables, "orders").Layout
Set text = fso.CreateTextFile(folder & "\rows.del", True)
For number = 1 To 400
    line = ""
    For i = 0 To view.Fields.Count - 1
        If i > 0 Then line = line & ","
        Select Case view.Fields(i).Type
            Case 8: line = line & pick(names, i)
            Case 7: line = line & pick(dates, i)
            Case 11: line = line & pick(truths, i)
            Case 100: line = line & pick(notes, i)
            Case 14: If view.Fields(i).Decimals = 0 Then line = line & pick(ids, i) Else line = line & pick(amounts, i)
            Case Else: line = line & pick(ids, i)
        End Select
        If number Mod 17 = 0 And i = 3 Then Exit For
    Next
    text.WriteLine line
Next
text.Close
Set view = Nothing

Dim byRow, byField, rowsA, addedA, failedA, rowsB, addedB, failedB
byRow = emptyTable("byrow")
byField = emptyTable("byfield")
same f.DbfFromDel(byRow, folder & "\rows.del", , , , rowsA, addedA, failedA), True, "import by rows"
same f.DbfFromDel(byField, folder & "\rows.del", "1 = 1", , , rowsB, addedB, failedB), True, "import field by field"
same rowsA, 400, "every line is a row"
same rowsA, rowsB, "both read the same rows"
same addedA, addedB, "both add the same number of records"
ok addedA > 50 And addedA < 400, "some rows are added and some fail: " & addedA
same listed(failedA), listed(failedB), "the same rows fail"
ok everything(byRow) = everything(byField), "both ways store the same values"

' ---- copies ----
Dim copied, back
copied = folder & ">rowcopy"
same f.DbfToDbf(orders, copied, , , , rowsA, addedA, failedA), True, "copy of a whole table"
same addedA, f.DbfCount(orders), "every record is copied"
ok everything(copied) = everything(orders), "a copy holds the values of its source"
same f.DbfToDbf(copied, folder & ">part", "AMOUNT > 100", "ID,NOTE,AMOUNT"), True, "copy of three fields"
f.DbfToDel copied, folder & "\some.del", "AMOUNT > 100", "ID,NOTE,AMOUNT"
ok everything(folder & ">part") = content(folder & "\some.del"), "fields chosen and condition hold for the copy"
back = emptyTable("byname")
same f.DbfFromDbfCorresponding(back, folder & ">part", , , , , rowsA, addedA), True, "copy by the names of fields"
same rowsA, addedA, "every row is added"
f.DbfToDel back, folder & "\back.del", , "ID,NOTE,AMOUNT"
ok content(folder & "\back.del") = content(folder & "\some.del"), "values go to the fields of the same name"
same f.DbfCount(back, "CUSTOMER <> 0"), 0, "the other fields stay blank"

' A value that the destination refuses ends a copy by position, whatever the way: countries go into a field of numbers.
Dim mixed
service.CreateTable "DBF|" & folder, "mixed", service.OpenTable("DBF|" & folder, "part").Layout, Nothing
mixed = folder & ">mixed"
same f.DbfFromDbf(mixed, orders, , "ID,NOTE,COUNTRY", 500, , rowsA, addedA, failedA), False, "a text is no number"
same rowsA & " " & addedA, "1 0", "the first row ends the copy"
same f.DbfFromDbf(mixed, orders, , "ID,NOTE,AMOUNT", 500, , rowsA, addedA, failedA), True, "append fields that fit"
same addedA & " " & TypeName(failedA), "500 Empty", "every row is added"

' The source may be the destination.
Dim before
before = f.DbfCount(folder & ">part")
same f.DbfFromDbf(folder & ">part", folder & ">part", , , , , rowsA, addedA), True, "a table is appended to itself"
same addedA, before, "each of its records once"
same f.DbfCount(folder & ">part"), 2 * before, "and no more"
finish
