' Tables as text files and back: delimited, fixed, tab-separated with European dates, rows that fail.
'   ./zu run samples/text-files.vbs FOLDER           e.g. build/demo; it writes into FOLDER\text-files
Option Explicit
Dim folder, work, source, fso, service, control, format, rows, added, failed, row

folder = Args(0)
source = folder & ">customers"
Set fso = CreateObject("Scripting.FileSystemObject")
work = fso.BuildPath(folder, "text-files")
If fso.FolderExists(work) Then fso.DeleteFolder work, True
fso.CreateFolder work
Set service = CreateObject("Zuengine.Zuproject").DatabaseService

' An empty table with the fields of the customers, and an index on NAME.
Function EmptyTable(name)
    Dim layout
    EmptyTable = work & ">" & name
    Set layout = service.OpenTable("DBF|" & folder, "customers").Layout
    service.CreateTable "DBF|" & work, name, layout, Nothing
    DbfIndex EmptyTable, Array("NAME")
End Function

Function FirstLine(file)
    FirstLine = fso.OpenTextFile(file).ReadLine
End Function

' --- delimited: texts in quotes, values joined by commas
DbfToDel source, work & "\customers.del"
Echo "delimited: " & FirstLine(work & "\customers.del")
DbfFromDel EmptyTable("delimited"), work & "\customers.del", , , , rows, added
Echo "  " & rows & " lines read, " & added & " records added"

' --- fixed: every value in its width
DbfToFix source, work & "\customers.fix", "COUNTRY = 'SE'", "ID,NAME,COUNTRY"
Echo "fixed:     " & FirstLine(work & "\customers.fix")
DbfFromFix EmptyTable("fixed"), work & "\customers.fix", , "ID,NAME,COUNTRY", , rows, added
Echo "  " & rows & " lines read, " & added & " records added"

' --- a format of one's own, once for each direction: tabs, no quotes, 31.12.2026
Set control = CreateObject("ZuDBFFunctions.ZuDbfControl")
control.ExportFormats.AddFormat "Tabs", 1
Set format = control.ExportFormats("Tabs")
format.Separator = vbTab
format.StringsQuoted = False
format.DateFormat = 1
format.DateSeparator = "."
control.ImportFormats.AddFormat "Tabs", 1
Set format = control.ImportFormats("Tabs")
format.Separator = vbTab
format.FieldQuoteChar = ""
format.DateFormat = 1
format.DateSeparator = "."
DbfToFile source, work & "\customers.txt", "ID <= 100", , , control, "Tabs"
Echo "tabs:      " & Replace(FirstLine(work & "\customers.txt"), vbTab, " | ")
DbfFromFile EmptyTable("tabs"), work & "\customers.txt", "COUNTRY <> 'SE'", , control, "Tabs", rows, added
Echo "  " & rows & " lines read, " & added & " records from outside Sweden added"

' --- rows that fail: their numbers come back, the reasons are in the engine's log
With fso.CreateTextFile(work & "\broken.del", True)
    .WriteLine "1,Anna"
    .WriteLine "2," & String(300, "x")
    .WriteLine "3,Carl"
    .Close
End With
DbfFromDel EmptyTable("broken"), work & "\broken.del", , "ID,NAME", , rows, added, failed
Echo "broken:    " & added & " of " & rows & " rows added"
If IsArray(failed) Then
    For Each row In failed
        Echo "  row " & row & " failed"
    Next
End If
