' Text files out of and into real tables.
Option Explicit

Dim f, folder, source, file, rows, added, failed, control, format, fso, view, count, expected, line, i, project, service, layout
folder = fact("scratch")
source = folder & ">customers"
file = folder & "\out.txt"
Set f = CreateObject("ZuDBFFunctions.Functions")
Set fso = CreateObject("Scripting.FileSystemObject")
Set project = CreateObject("Zuengine.Zuproject")
Set service = project.DatabaseService

Function content(path)
    content = ""
    If fso.GetFile(path).Size > 0 Then content = fso.OpenTextFile(path).ReadAll
End Function

Sub put(path, text)
    With fso.CreateTextFile(path, True)
        .Write text
        .Close
    End With
End Sub

Function emptyTable(name)
    emptyTable = folder & ">" & name
    Set layout = service.OpenTable("DBF|" & folder, "customers").Layout
    service.CreateTable "DBF|" & folder, name, layout, Nothing
    Set layout = Nothing
End Function

' The text of a value, as the format "Delimited" writes it; made here by hand.
Function written(field)
    Dim value
    value = field.Value
    Select Case field.Type
        Case 8, 100
            written = """" & Replace(RTrim(value), """", """""") & """"
        Case 7
            written = ""
            If Not IsNull(value) Then written = Year(value) & Right("0" & Month(value), 2) & Right("0" & Day(value), 2)
        Case 11
            written = "F"
            If value Then written = "T"
        Case Else
            written = Replace(CStr(value), ",", ".")
    End Select
End Function

' ---- out ----
same f.DbfToDel(source, file), True, "DbfToDel writes a table"
same UBound(Split(content(file), vbCrLf)), CLng(fact("customers")), "one line for each record, the last one ended too"
Set view = f.DbfSelect(source, "COUNTRY = 'SE'")
expected = ""
view.MoveFirst
Do Until view.Eof
    line = ""
    For i = 0 To view.Fields.Count - 1
        If i > 0 Then line = line & ","
        line = line & written(view.Fields(i))
    Next
    expected = expected & line & vbCrLf
    view.MoveNext
Loop
Set view = Nothing
same f.DbfToDel(source, file, "COUNTRY = 'SE'"), True, "DbfToDel takes a condition"
ok content(file) = expected, "each value is written as its field shows it"
same f.DbfToDel(source, file, "COUNTRY = 'XX'"), True, "no matching record is no failure"
same fso.GetFile(file).Size, 0, "the file is there and empty"
same f.DbfToDel(source, file, , "ID,NAME", 1), True, "fields and number of records can be chosen"
ok Left(content(file), 2) = "1," And UBound(Split(content(file), vbCrLf)) = 1, "one line with two values"
same f.DbfToFile(source, file, , "ID", 1, , "No such format"), False, "an unknown format answers False"
same f.DbfToDel(folder & ">nosuch", folder & "\none.txt"), False, "a missing table answers False"
ok Not fso.FileExists(folder & "\none.txt"), "and makes no file"
same f.DbfToDel(source, folder & "\no folder\out.txt"), False, "a folder that is not there answers False"

' ---- in ----
Dim target
target = emptyTable("copied")
same f.DbfToDel(source, file), True, "the whole table goes out"
same f.DbfFromDel(target, file, , , , rows, added, failed), True, "and comes in again"
same rows & " " & added, fact("customers") & " " & fact("customers"), "every line became a record"
same TypeName(failed), "Empty", "none failed"
same f.DbfToDel(target, folder & "\again.txt"), True, "the copy goes out"
ok content(folder & "\again.txt") = content(file), "and is the same to the last byte"
target = emptyTable("fixed")
same f.DbfToFix(source, file), True, "the whole table goes out in lines of fixed length"
same f.DbfFromFix(target, file, , , , rows, added, failed), True, "and comes in again"
same added, fact("customers"), "every line became a record"
same f.DbfToFix(target, folder & "\again.txt"), True, "the copy goes out"
ok content(folder & "\again.txt") = content(file), "and is the same to the last byte, fixed"

target = emptyTable("some")
put file, "1,Anna" & vbCrLf & vbCrLf & "2,Bo" & vbCrLf & "3,Carl" & vbCrLf
same f.DbfFromDel(target, file, "ID <> 2", "ID,NAME", , rows, added, failed), True, "a condition looks at each record before it is saved"
same rows & " " & added & " " & TypeName(failed), "3 2 Empty", "empty lines are passed over, rejected records are no failures"
same f.DbfLookup(target, "ID = 3")("NAME").Value, "Carl", "the values are in their fields"
same f.DbfFromDel(target, folder & "\nothing here.txt", , , , rows, added, failed), False, "a missing file answers False"
same rows & " " & added, "0 0", "and counts of zero"
rows = "untouched"
same f.DbfFromFile(target, file, , , , "No such format", rows), False, "an unknown import format answers False"
same rows, "untouched", "and leaves the outputs alone"

' ---- an index is kept ----
ok service.CreateTable("DBF|" & folder, "indexed", service.OpenTable("DBF|" & folder, "customers").Layout, Nothing), "a table for the index"
ok f.DbfIndex(folder & ">indexed", Array("ID")), "has one on ID"
same f.DbfToDel(source, file), True, "lines for it"
same f.DbfFromDel(folder & ">indexed", file, , , , rows, added), True, "are added"
same f.DbfLookup(folder & ">indexed", 77)("ID").Value, 77, "and found by their keys"
same UBound(service.Check("DBF|" & folder, "indexed")), -1, "table and index are sound"

' ---- formats of one's own ----
Set control = CreateObject("ZuDBFFunctions.ZuDbfControl")
control.ExportFormats.AddFormat "Tabs", 1
control.ImportFormats.AddFormat "Tabs", 1
Set format = control.ExportFormats("TABS")
format.Separator = vbTab
format.StringsQuoted = False
format.DateFormat = 1
format.DateSeparator = "."
Set format = control.ImportFormats("tabs")
format.Separator = vbTab
format.FieldQuoteChar = ""
format.DateFormat = 1
format.DateSeparator = "."
target = emptyTable("tabs")
same f.DbfToFile(source, file, , , , control, "Tabs"), True, "a format of one's own is found by its name"
ok InStr(content(file), vbTab) > 0 And InStr(content(file), """") = 0, "and used"
same f.DbfFromFile(target, file, , , control, "Tabs", rows, added, failed), True, "the import format of that name reads it"
same added, fact("customers"), "to the last record"
same f.DbfToFile(target, folder & "\again.txt", , , , control, "Tabs"), True, "tabs go out again"
ok content(folder & "\again.txt") = content(file), "and nothing was lost on the way"
count = 0
For Each format In control.ExportFormats
    count = count + 1
Next
same count, 3, "For Each walks over the formats"
same control.ExportFormats(3).Name, "Tabs", "Item takes a position"
On Error Resume Next
control.ExportFormats.AddFormat "tabs"
same Err.Number, 457, "a second format of a name is error 457"
Err.Clear
count = control.ExportFormats("none").Name
same Err.Number, 9, "a missing format is error 9"
Err.Clear
On Error Goto 0

' ---- rows that fail ----
target = emptyTable("failing")
put file, "1,Anna" & vbCrLf & "2," & String(300, "x") & vbCrLf & "3,Carl" & vbCrLf
same f.DbfFromDel(target, file, , "ID,NAME", , rows, added, failed), True, "a line that does not fit is no end"
same rows & " " & added & " " & failed(0) & UBound(failed), "3 2 20", "its number is listed"

finish
