' text.vbs JOB TABLE FILE: one export, or one import into a new table with the fields of TABLE beside FILE.
Option Explicit
Dim folder, service, layout, rows, added
Select Case Args(0)
    Case "export-delimited"
        If Not DbfToDel(Args(1), Args(2)) Then Quit 1
    Case "export-fixed"
        If Not DbfToFix(Args(1), Args(2)) Then Quit 1
    Case Else
        folder = CreateObject("Scripting.FileSystemObject").GetParentFolderName(Args(2))
        Set service = CreateObject("Zuengine.Zuproject").DatabaseService
        Set layout = service.OpenTable("DBF|" & Args(1), "").Layout
        service.CreateTable "DBF|" & folder, "imported", layout, Nothing
        If Args(0) = "import-fixed" Then
            If Not DbfFromFix(folder & ">imported", Args(2), , , , rows, added) Then Quit 1
        Else
            If Not DbfFromDel(folder & ">imported", Args(2), , , , rows, added) Then Quit 1
        End If
        If rows <> added Then Quit 1
End Select
Echo "done"
