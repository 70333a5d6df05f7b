' Work on whole tables through the database service.
Option Explicit

Dim message, project, service, database, source, layout, list, table, view, names, i, fso

Set project = CreateObject("Zuengine.Zuproject")
Set service = project.DatabaseService
database = "DBF|" & fact("scratch")
Set fso = CreateObject("Scripting.FileSystemObject")

Function findings(name)
    Dim found, text
    found = ""
    For Each text In service.Check(database, name)
        found = found & text & "; "
    Next
    findings = found
End Function

Function listed(names, wanted)
    Dim name
    listed = False
    For Each name In names
        If LCase(name) = wanted Then listed = True
    Next
End Function

' ---- making ----
Set source = service.OpenTable(database, "customers")
Set layout = source.Layout
Set list = service.NewFieldList
list.Add "NAME"
list.Add "ID", True
ok service.CreateTable(database, "made", layout, list), "CreateTable makes a table from a layout"
ok service.TableExists(database, "made"), "that is there"
ok fso.FileExists(fact("scratch") & "\made.cdx"), "with its index"
Set table = service.OpenTable(database, "made")
same table.RecordCount, 0, "and without records"
same table.Layout.Fields.Count, layout.Fields.Count, "all fields are there"
For i = 0 To layout.Fields.Count - 1
    same table.Layout(i).Name & table.Layout(i).Type & " " & table.Layout(i).Size & " " & table.Layout(i).Decimals, _
        layout(i).Name & layout(i).Type & " " & layout(i).Size & " " & layout(i).Decimals, "field " & i & " is alike"
Next
ok table.OpenIndex(""), "the index is the default one"
same table.CurrentIndex.KeyFields.Count, 2, "with both parts of its key"
On Error Resume Next
service.CreateTable database, "made", layout, Nothing
message = Err.Description
On Error Goto 0
ok InStr(message, "made") > 0, "a table that exists is not made again"
names = service.TableNames(database)
ok listed(names, "customers") And listed(names, "made"), "TableNames lists both"

' ---- filling ----
Dim all, added, kept
Set all = source.Select("ID < 200", 0, 0, "")
Set view = table.Select(Null, 1, 0, "")
added = 0
Do Until all.Eof
    If view.AddNew(all) Then If view.Update Then added = added + 1
    all.MoveNext
Loop
same added, all.RecordCount, "each record is added"
ok added > 50, "there are some"
same view.RecordCount, added, "and joins the view"

' ---- work that needs the table alone ----
On Error Resume Next
service.Pack database, "made"
message = Err.Description
On Error Goto 0
ok InStr(message, "made") > 0, "an open view is in the way of Pack"
ok InStr(project.LastError, "still holds") > 0, "and the reason says so"
For i = view.RecordCount - 1 To view.RecordCount - 10 Step -1
    view.Delete i
Next
Set view = Nothing
Set table = Nothing
kept = added - 10
same findings("made"), "", "nothing is wrong with it"
ok service.Undelete(database, "made", "RECNO() > " & (added - 3)), "Undelete takes a condition"
Set table = service.OpenTable(database, "made")
same table.Select("", 0, 0, "").RecordCount, kept + 3, "and takes the marks off those records"
Set table = Nothing
ok service.Pack(database, "made"), "Pack leaves out what is deleted"
Set table = service.OpenTable(database, "made")
same table.RecordCount, kept + 3, "for good"
Set table = Nothing
ok service.Undelete(database, "made", ""), "Undelete without a condition means all"
same findings("made"), "", "nothing is wrong after Pack"

' ---- indexes ----
Set list = service.NewFieldList
list.Add "UPPER(NAME)", True
ok service.CreateIndex(database, "made", list), "CreateIndex makes the index from an expression"
Set table = service.OpenTable(database, "made")
ok table.OpenIndex(""), "which is the default one"
Set view = table.Select("", 0, 0, "")
ok view.RecordCount = kept + 3 And inOrder(view), "its order is descending"
Set view = Nothing
Set table = Nothing
Set list = service.NewFieldList
list.Add 0
list.Add "RecNo"
ok service.CreateIndex(database, "made", list), "a field number and RecNo make an index too"
ok service.Reindex(database, "made"), "Reindex builds it anew"
same findings("made"), "", "nothing is wrong with it"
Set table = service.OpenTable(database, "made")
names = table.IndexNames
names = names(0)
Set table = Nothing
ok service.DropIndex(database, "made", names), "DropIndex removes it"
ok Not service.DropIndex(database, "made", names), "once"
ok Not fso.FileExists(fact("scratch") & "\made.cdx"), "the index file goes with its last index"
Set list = service.NewFieldList
On Error Resume Next
service.CreateIndex database, "made", list
message = Err.Description
On Error Goto 0
ok InStr(message, "made") > 0, "an empty list makes no index"
list.Add "NOSUCH"
On Error Resume Next
service.CreateIndex database, "made", list
message = Err.Description
On Error Goto 0
ok InStr(message, "NOSUCH") > 0, "an unknown field is named"

' ---- the end ----
ok service.Repair(database, "made"), "Repair of a sound table is through at once"
ok service.Zap(database, "made"), "Zap leaves out all records"
Set table = service.OpenTable(database, "made")
same table.RecordCount, 0, "for good"
Set table = Nothing
ok service.DropTable(database, "made"), "DropTable removes the table"
ok Not service.TableExists(database, "made"), "so that it is gone"
ok Not service.DropTable(database, "made"), "a table that is not there is not removed"
ok Not fso.FileExists(fact("scratch") & "\made.dbf"), "the file is gone"
On Error Resume Next
service.Pack database, "made"
message = Err.Description
On Error Goto 0
ok InStr(message, "made") > 0, "other work on a missing table is an error"
On Error Resume Next
service.DropTable database, "..\away"
message = Err.Description
On Error Goto 0
ok InStr(message, "leads out") > 0, "no name leads out of the folder"

Function inOrder(view)
    Dim last
    inOrder = True
    last = UCase(view("NAME").Value)
    Do Until view.Eof
        If StrComp(UCase(view("NAME").Value), last, 0) > 0 Then inOrder = False
        last = UCase(view("NAME").Value)
        view.MoveNext
    Loop
End Function

finish
