' Every type of field: values that fit are kept exactly, values that do not are refused and change nothing.
Option Explicit

Dim project, service, database, fso, table, view, name
Set project = CreateObject("Zuengine.Zuproject")
Set service = project.DatabaseService
Set fso = CreateObject("Scripting.FileSystemObject")
For Each name In Array("typed.dbf", "typed.fpt")
    fso.CopyFile fact("tables") & "\" & name, fact("scratch") & "\" & name
Next
database = "DBF|" & fact("scratch")
Set table = service.OpenTable(database, "typed")
Set view = table.Select(Null, 0, 0, "")

Sub fits(field, value, expected, statement)
    Dim read
    On Error Resume Next
    view.AddNew
    view(field).Value = value
    If Err.Number <> 0 Then
        ok False, statement & ": " & Err.Description
        Exit Sub
    End If
    ok view.Update, statement & " is saved"
    read = view(field).Value
    If IsNull(expected) Then
        ok IsNull(read), statement & " is Null"
    ElseIf VarType(expected) = 7 Then
        ok Abs(CDbl(read) - CDbl(expected)) < 0.000001, statement & " is kept (" & CStr(read) & ")"
    Else
        same read, expected, statement & " is kept"
    End If
    If Err.Number <> 0 Then ok False, statement & ": " & Err.Description
End Sub

Sub refused(field, value, statement)
    Dim before, number, text
    On Error Resume Next
    view.AddNew
    before = CStr("" & view(field).Value)
    Err.Clear
    view(field).Value = value
    number = Err.Number
    text = Err.Description
    ok number <> 0 And InStr(text, field) > 0, statement & " is refused with the name of the field (" & text & ")"
    same CStr("" & view(field).Value), before, statement & " changes nothing"
    view.CancelUpdate
End Sub

fits "TXT", "abc", "abc", "a text"
fits "TXT", "0123456789", "0123456789", "a text as wide as its field"
fits "TXT", "  x", "  x", "a text with leading blanks"
fits "TXT", "abc                ", "abc", "a text with trailing blanks beyond the field"
fits "TXT", "", "", "an empty text"
fits "TXT", 12.5, "12.5", "a number as text"
refused "TXT", "01234567890", "a text that is too wide"

fits "NUM", 12345.67, 12345.67, "a number with decimals"
fits "NUM", -1234.5, -1234.5, "a negative number"
fits "NUM", 0.005, 0.01, "a number that is rounded to its decimals"
fits "NUM", "17.25", 17.25, "a text that is a number"
refused "NUM", 123456.78, "a number that is too wide"
refused "NUM", -12345.67, "a negative number that is too wide"
refused "NUM", "seventeen", "a text that is no number"
fits "WHOLE", 9999, 9999, "a whole number"
fits "WHOLE", -999, -999, "a negative whole number"
refused "WHOLE", 10000, "a whole number that is too wide"

fits "FLO", 123.456, 123.456, "a float"
fits "FLO", -1.5, -1.5, "a negative float"
refused "FLO", 1E+15, "a float that is too wide"
refused "FLO", "1.5.7", "a text that is no float"

fits "FLAG", True, True, "True"
fits "FLAG", False, False, "False"
fits "FLAG", "Y", True, "a text that is true"
fits "FLAG", "no", False, "a text that is false"
refused "FLAG", "perhaps", "a text that is no truth value"

fits "DAY", DateSerial(2026, 11, 21), DateSerial(2026, 11, 21), "a date"
fits "DAY", DateSerial(2026, 11, 21) + TimeSerial(13, 14, 15), DateSerial(2026, 11, 21), "a date without its time"
fits "DAY", "2024-02-29", DateSerial(2024, 2, 29), "a text that is a date"
fits "DAY", Null, Null, "no date"
refused "DAY", "2023-02-29", "a day that does not exist"
refused "DAY", "yesterday", "a text that is no date"

fits "MOMENT", DateSerial(2026, 11, 21) + TimeSerial(13, 14, 15), DateSerial(2026, 11, 21) + TimeSerial(13, 14, 15), "a date with its time"
fits "MOMENT", DateSerial(1900, 1, 1), DateSerial(1900, 1, 1), "an old date"
refused "MOMENT", "noon", "a text that is no moment"

fits "INT", 2147483647, 2147483647, "the greatest integer"
fits "INT", CDbl(-2147483648), -2147483648, "the least integer"
refused "INT", 2147483648, "an integer out of range"
refused "INT", "1 2", "a text that is no integer"

fits "DBL", 0.1, 0.1, "a double"
fits "DBL", -1.23456789012345E+200, -1.23456789012345E+200, "a great double"
refused "DBL", "x", "a text that is no double"

fits "MONEY", CCur("123456789012.3456"), CCur("123456789012.3456"), "a great amount"
fits "MONEY", CCur(-0.0001), CCur(-0.0001), "the least amount"
fits "MONEY", 12.34, CCur(12.34), "an amount from a number"
refused "MONEY", 1E+16, "an amount out of range"
refused "MONEY", "free", "a text that is no amount"

fits "NOTE", "short", "short", "a memo"
fits "NOTE", String(70000, "x") & "end", String(70000, "x") & "end", "a long memo"
fits "NOTE", "two" & vbCrLf & "lines", "two" & vbCrLf & "lines", "a memo of two lines"
fits "NOTE", "blanks  ", "blanks  ", "a memo with blanks at its end"

fits "NTXT", "abc", "abc", "a text in a field that can be null"
fits "NTXT", Null, Null, "Null in a field that can be null"
fits "NNUM", 12.5, 12.5, "a number in a field that can be null"
fits "NNUM", Null, Null, "no number in a field that can be null"
refused "NNUM", 12345.6, "a number that is too wide for a field that can be null"

' Everything again through another opening, record by record.
Dim count, again
count = view.RecordCount
Set view = Nothing
Set table = Nothing
service.CloseTables
Set again = service.OpenTable(database, "typed").Select("", 0, 0, "")
same again.RecordCount, count, "no record that was refused has been written"
same again("TXT").Value, "abc", "the first record is there"
Set again = Nothing
Dim text, found
found = ""
For Each text In service.Check(database, "typed")
    found = found & text & "; "
Next
same found, "", "nothing is wrong with the table"

finish
