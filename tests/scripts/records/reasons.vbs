' Every way in which a function can fail on real tables: the failure value, and the reason in the last error, which names what
' it was and is gone after the next call that succeeds.
Option Explicit

Class Routines
    Public Function WantsTwo(one, two)
        WantsTwo = True
    End Function
    Public Function Stops()
        Stops = False
    End Function
    Public Function Replaces(what)
        Select Case what
            Case "unknown": fails "DbfReplace of an unknown field", f.DbfReplace("NOSUCH", 1), Empty, "customers|NOSUCH"
            Case "type": fails "DbfReplace with a text for a number", f.DbfReplace("CREDIT", "abc"), Empty, "CREDIT|customers|a number|""abc"""
            Case "great": fails "DbfReplace with a number too great", f.DbfReplace("CREDIT", 1E+30), Empty, "CREDIT|customers|too great"
            Case "wide": fails "DbfReplace with a text too long", f.DbfReplace("NAME", String(500, "x")), Empty, "NAME|customers|500|40"
            Case "number": fails "DbfReplace of the record's number", f.DbfReplace("##RECNO", 5), Empty, "customers|##RECNO|cannot be changed"
            Case "odd": fails "DbfReplace without pairs", f.DbfReplace("CREDIT"), Empty, "DbfReplace|pairs"
            Case "none": fails "DbfReplace without anything", f.DbfReplace(Array()), Empty, "DbfReplace|pairs"
        End Select
        Replaces = True
    End Function
End Class

Dim f, engine, files, folder, table, nowhere, foreign, values, view, ref, text, missing, badText, definition, rows, added, failed, what, singles, undimensioned()
folder = fact("scratch")
table = folder & ">customers"
nowhere = folder & ">nosuch"
foreign = folder & ">foreign"
singles = folder & ">single"
Set f = CreateObject("ZuDBFFunctions.Functions")
Set engine = CreateObject("Zuengine.Zuproject").Engine
engine.RoutineHolder = New Routines
Set files = CreateObject("Scripting.FileSystemObject")
text = folder & "\rows.txt"
missing = folder & "\missing\rows.txt"

' A table with an index that nobody here keeps up to date can only be read.
files.CopyFile folder & "\customers.dbf", folder & "\foreign.dbf"
files.CreateTextFile(folder & "\foreign.mdx").Write String(2048, "x")

Sub holds(statement, pieces)
    Dim piece, lacking
    For Each piece In Split(pieces, "|")
        If InStr(1, engine.LastError, piece, 1) = 0 Then lacking = lacking & " " & piece
    Next
    If engine.LastErrorCode = 0 Then lacking = lacking & " a number"
    If lacking <> "" Then lacking = " (lacks" & lacking & ": " & engine.LastError & ")"
    ok lacking = "", statement & " has its reason" & lacking
End Sub

Function shown(value)
    If IsObject(value) Then
        shown = "an object"
        If value Is Nothing Then shown = "Nothing"
    ElseIf IsEmpty(value) Then
        shown = "Empty"
    Else
        shown = CStr(value)
    End If
End Function

Function listed(numbers)
    Dim number
    For Each number In numbers
        listed = listed & "," & number
    Next
    listed = Mid(listed, 2)
End Function

Sub fails(statement, answer, failure, pieces)
    same shown(answer), shown(failure), statement
    holds statement, pieces
    same f.DbfCount(table, "ID = 2"), 1, "then something succeeds"
    same engine.LastErrorCode & engine.LastError, "0", "and the reason of """ & statement & """ is not stale"
End Sub

' ---- opening
fails "DbfOpen without such a table", f.DbfOpen(nowhere), Nothing, "Cannot open|nosuch|does not exist|" & folder
fails "DbfOpen without such a folder", f.DbfOpen(folder & "\sub>customers"), Nothing, "customers|\sub|does not exist"
fails "DbfOpen of a folder", f.DbfOpen(folder), Nothing, folder & "|a table name is needed"
fails "DbfOpen by an unknown technology", f.DbfOpen("XYZ|" & table), Nothing, "XYZ|known are: DBF"
fails "DbfOpen by a number", f.DbfOpen(12), Nothing, "folder>table|12"
fails "DbfOpen by Null", f.DbfOpen(Null), Nothing, "folder>table|Null"
fails "DbfOpen by an object", f.DbfOpen(f), Nothing, "folder>table|an object"
fails "DbfOpen by an empty list", f.DbfOpen(Array()), Nothing, "folder>table|()"
fails "DbfSelect without such a table", f.DbfSelect(nowhere), Nothing, "nosuch"
fails "DbfSelect with a faulty condition", f.DbfSelect(table, "CREDIT > > 5"), Nothing, "customers|position 10|CREDIT > > 5|expected a value"
fails "DbfSelect with an unknown field in the condition", f.DbfSelect(table, "CREDITS > 5"), Nothing, "customers|CREDITS|perhaps CREDIT"
fails "DbfSelect with a condition of the wrong type", f.DbfSelect(table, "CREDIT = 'x'"), Nothing, "customers|expected a number|a text"
fails "DbfSelect with a condition that is none", f.DbfSelect(table, "CREDIT + 1"), Nothing, "customers|true or false|a number"
fails "DbfSelect of an unknown field", f.DbfSelect(table, "", "ID,NOSUCH"), Nothing, "customers|NOSUCH"
fails "DbfSelect of a field number too great", f.DbfSelect(table, "", Array(99)), Nothing, "customers|99|there are 10"
fails "DbfSelect of fields that are none", f.DbfSelect(table, "", Array(Null)), Nothing, "customers|names and numbers"
fails "DbfCount without such a table", f.DbfCount(nowhere), -1, "nosuch"
fails "DbfCount with a faulty condition", f.DbfCount(table, "ID = "), -1, "customers|ID = |expected a value"
fails "DbfCount by no definition", f.DbfCount(Empty), -1, "folder>table|Empty"
fails "DbfLookup without such a table", f.DbfLookup(nowhere, 1), Nothing, "nosuch"
fails "DbfLookup with a faulty condition", f.DbfLookup(table, "ID > "), Nothing, "customers|ID > |expected a value"
fails "DbfLookup of an unknown field", f.DbfLookup(table, 4, , "NOSUCH"), Nothing, "customers|NOSUCH"
fails "DbfLookup with a key of the wrong type", f.DbfLookup(table, "abc"), Nothing, "ID|customers|a number|""abc"""
fails "DbfLookup with an object as key", f.DbfLookup(table, Nothing), Nothing, "ID|customers|a number|no object"
fails "DbfLookup with an exactness that is none", f.DbfLookup(table, 4, "perhaps"), Nothing, "perhaps|truth value|True"
fails "DbfVarDeclare without such a table", f.DbfVarDeclare(nowhere), Nothing, "nosuch"

' ---- an open table
Set ref = f.DbfOpen(table)
fails "OpenIndex of an unknown index", ref.OpenIndex("NOSUCH"), False, "customers|NOSUCH"
Set view = f.DbfOpen(foreign)
fails "OpenIndex where there is none", view.OpenIndex(""), False, "foreign|no index"
fails "OpenIndex without a name where there is none", view.OpenIndex(), False, "foreign|no index"
Set view = Nothing
fails "Filter with a faulty condition", ref.Filter("ID <"), Nothing, "customers|ID <|expected a value"
fails "Process without a routine", ref.Process(""), 0, "routine|missing"
fails "Process with an unknown routine", ref.Process("Missing"), 0, "Missing"
ref.CloseTable
fails "Filter of a closed table", ref.Filter(""), Nothing, "not open|DbfOpen"
fails "Lookup in a closed table", ref.Lookup(1), Nothing, "not open|DbfOpen"
fails "OpenIndex of a closed table", ref.OpenIndex("ID"), False, "not open|DbfOpen"
fails "Process of a closed table", ref.Process("Stops"), 0, "not open|DbfOpen"

' ---- views and values
fails "DbfTop without a view", f.DbfTop(), False, "DbfTop|DbfProcess"
fails "DbfTop of a number", f.DbfTop(5), False, "DbfTop|view|5"
fails "DbfBottom without a view", f.DbfBottom(), False, "DbfBottom|DbfProcess"
fails "DbfBottom of no object", f.DbfBottom(Nothing), False, "DbfBottom|view|no object"
fails "DbfRecNo without a view", f.DbfRecNo(), 0, "DbfRecNo|DbfProcess"
fails "DbfRecNo of a text", f.DbfRecNo("x"), 0, "DbfRecNo|view|""x"""
fails "DbfFieldValue of no field", f.DbfFieldValue(Nothing), Empty, "DbfFieldValue|field"
Set view = f.DbfSelect(table, "ID < 4")
view.MoveLast
view.MoveNext
fails "DbfFieldValue behind the last record", f.DbfFieldValue(view("NAME")), Empty, "customers|no current record|past the last"
fails "DbfVarReset of a view", f.DbfVarReset(view), Empty, "DbfVarReset|DbfVarDeclare"
fails "DbfVarReset of no object", f.DbfVarReset(Nothing), Empty, "DbfVarReset|DbfVarDeclare"
fails "Descend for an unknown technology", f.Descend("A", "XYZ"), Empty, "XYZ|known are: DBF"
fails "Descend of an object", f.Descend(view), Empty, "object"
view.MoveFirst
same f.DbfCount(nowhere), -1, "a failure"
same f.DbfTop(view) & f.DbfBottom(view) & f.DbfRecNo(view) & f.DbfFieldValue(view("ID")), CStr(True) & CStr(False) & "11", "and functions that only read"
holds "what has failed before, so that it can be told beside what they read,", "nosuch"

' ---- processing
fails "DbfProcess without a routine's name", f.DbfProcess(table, ""), 0, "DbfProcess|name of the routine"
same f.DbfProcess(table, ""), 0, "again"
same Hex(engine.LastErrorCode), "8004102C", "under the number of that message"
fails "DbfProcess without such a table", f.DbfProcess(nowhere, "Stops"), 0, "nosuch"
fails "DbfProcess with an unknown routine", f.DbfProcess(table, "Missing"), 0, "Missing"
fails "DbfProcess with a faulty condition", f.DbfProcess(table, "Stops", "ID <"), 0, "customers|ID <"
fails "DbfReplace outside of a routine", f.DbfReplace("NAME", "x"), Empty, "DbfReplace|DbfProcess"
For Each what In Array("unknown", "type", "great", "wide", "number", "odd", "none")
    same f.DbfProcess(table, "Replaces", "ID = 1", , , what), 1, "DbfProcess goes on over what the routine itself has met"
Next
same f.DbfProcess(table, "Stops", "ID = 1"), 0, "a routine that answers False"
same engine.LastError, "", "is no failure"
fails "DbfProcess with a routine of other arguments", f.DbfProcess(table, "WantsTwo", "ID < 5"), 0, "customers|WantsTwo|record 1"
engine.ClearContextItems  ' an error in a routine leaves the view in hand, and with it the table

' ---- adding
Set values = f.DbfVarDeclare(table)
values("ID").Value = 1
fails "DbfAddNew without such a table", f.DbfAddNew(nowhere, values), False, "nosuch"
fails "DbfAddNew without values", f.DbfAddNew(table, Nothing), False, "view|DbfVarDeclare"
fails "DbfAddNew to a table that can only be read", f.DbfAddNew(foreign, values), False, "foreign|only be read|.mdx|Data.AllowStaleIndexes"
fails "DbfAddNew of a key that may be there only once", f.DbfAddNew(singles, values), False, "record 1 |single|the same key|""ID"""
fails "DbfConditionalAddNew without such a table", f.DbfConditionalAddNew(nowhere, values, 1), False, "nosuch"
fails "DbfConditionalAddNew where the key is there", f.DbfConditionalAddNew(table, values, 1), False, "customers|key 1|already"
fails "DbfConditionalAddNew where the condition is met", f.DbfConditionalAddNew(table, values, "ID = 1"), False, "customers|ID = 1|already"
fails "DbfConditionalAddNew with a faulty condition", f.DbfConditionalAddNew(table, values, "ID = "), False, "customers|ID = |expected a value"
values("NAME").Value = "x"
On Error Resume Next
values("CREDIT").Value = "abc"
what = Err.Description
On Error Goto 0
ok InStr(what, "CREDIT") > 0 And InStr(what, "customers") > 0 And InStr(what, "a number") > 0, "a record variable says as much (" & what & ")"

' ---- changing
fails "DbfUpdate without such a table", f.DbfUpdate(nowhere, 1, Array("NAME", "x")), False, "nosuch"
fails "DbfUpdate without pairs", f.DbfUpdate(table, 1, Array("NAME")), False, "update list|pairs"
fails "DbfUpdate with a list never given bounds", f.DbfUpdate(table, 1, undimensioned), False, "update list|pairs"
fails "DbfUpdate of a key that is not there", f.DbfUpdate(table, -5, Array("NAME", "x")), False, "customers|no record|key -5"
fails "DbfUpdate with a condition that no record meets", f.DbfUpdate(table, "ID = -5", Array("NAME", "x")), False, "customers|no record|ID = -5"
fails "DbfUpdate of an unknown field", f.DbfUpdate(table, 1, Array("NOSUCH", "x")), False, "customers|NOSUCH"
fails "DbfUpdate with a text for a number", f.DbfUpdate(table, 1, Array("CREDIT", "x")), False, "customers|CREDIT|a number|""x"""
fails "DbfUpdate with a text for a date", f.DbfUpdate(table, 1, Array("SINCE", "some day")), False, "customers|SINCE|a date|some day"
fails "DbfUpdate with a number too great", f.DbfUpdate(table, 1, Array("CREDIT", 1E+25)), False, "customers|CREDIT|does not fit"
fails "DbfUpdate to a key that may be there only once", f.DbfUpdate(singles, 2, Array("ID", 1)), False, "record 1 |single|the same key|""ID"""
fails "DbfUpdate of a table that can only be read", f.DbfUpdate(foreign, "ID = 1", Array("NAME", "x")), False, "foreign|only be read|.mdx"
fails "DbfModify", f.DbfModify(table, table), False, "DbfModify|not available"
fails "DbfDelete without such a table", f.DbfDelete(nowhere, 1), 0, "nosuch"
fails "DbfDelete of a key that is not there", f.DbfDelete(table, -5), 0, "customers|no record|key -5"
fails "DbfDelete with a condition that no record meets", f.DbfDelete(table, "ID = -5"), 0, "customers|no record|ID = -5"
fails "DbfDelete with a faulty condition", f.DbfDelete(table, "ID = "), 0, "customers|ID = |expected a value"
fails "DbfDelete in a table that can only be read", f.DbfDelete(foreign, "ID = 1"), 0, "foreign|only be read|.mdx"
fails "DbfUndelete without such a table", f.DbfUndelete(nowhere), False, "nosuch"
fails "DbfUndelete by a number", f.DbfUndelete(5), False, "folder>table|5"
fails "DbfUndelete with a faulty condition", f.DbfUndelete(table, "ID = "), False, "customers|ID = |expected a value"
Set view = Nothing
Set values = Nothing
fails "DbfCleanup without such a table", f.DbfCleanup(nowhere), False, "nosuch"
fails "DbfCleanup by a number", f.DbfCleanup(5), False, "folder>table|5"
fails "DbfCleanup of a table that can only be read", f.DbfCleanup(foreign), False, "foreign|only be read|.mdx"
Set ref = f.DbfOpen(table)
fails "DbfCleanup of a table that is held", f.DbfCleanup(table), False, "customers|program still holds"
fails "DbfIndex of a table that is held", f.DbfIndex(table, Array("ID")), False, "customers|program still holds"
Set ref = Nothing

' ---- indexes
fails "DbfIndex without such a table", f.DbfIndex(nowhere, Array("ID")), False, "nosuch"
fails "DbfIndex by a number", f.DbfIndex(5, Array("ID")), False, "folder>table|5"
fails "DbfIndex of an unknown field", f.DbfIndex(table, Array("NOSUCH")), False, "customers|NOSUCH"
fails "DbfIndex of a faulty expression", f.DbfIndex(table, Array("ID +")), False, "customers|ID +"
fails "DbfIndex of nothing", f.DbfIndex(table, Array()), False, "customers|index"
fails "DbfIndex with a list never given bounds", f.DbfIndex(table, undimensioned), False, "index"
fails "DbfIndex of a field number too great", f.DbfIndex(table, Array(99)), False, "customers|99|there are 10"
fails "DbfIndex of Null", f.DbfIndex(table, Array(Null)), False, "customers|names"
fails "DbfIndex of a table that can only be read", f.DbfIndex(foreign, Array("ID")), False, "foreign|only be read|.mdx"

' ---- from table to table
fails "DbfFromDbf without such a source", f.DbfFromDbf(table, nowhere), False, "nosuch"
fails "DbfFromDbf without such a destination", f.DbfFromDbf(nowhere, table), False, "nosuch"
fails "DbfFromDbf by a number", f.DbfFromDbf(table, 5), False, "folder>table|5"
fails "DbfFromDbf with a faulty condition", f.DbfFromDbf(table, table, "ID <"), False, "customers|ID <"
fails "DbfFromDbf of an unknown source field", f.DbfFromDbf(table, table, "", "NOSUCH"), False, "customers|NOSUCH"
fails "DbfFromDbf to an unknown field", f.DbfFromDbf(table, table, "ID < 3", , , "NOSUCH"), False, "customers|NOSUCH"
fails "DbfFromDbf of texts into numbers", f.DbfFromDbf(table, table, "ID < 3", "NAME", , "ID"), False, "customers|ID|a number"
fails "DbfFromDbf to a table that can only be read", f.DbfFromDbf(foreign, table, "ID < 3"), False, "foreign|only be read|.mdx"
fails "DbfFromDbfCorresponding without such a source", f.DbfFromDbfCorresponding(table, nowhere), False, "nosuch"
fails "DbfFromDbfCorresponding without such a destination", f.DbfFromDbfCorresponding(nowhere, table), False, "nosuch"
same f.DbfFromDbfCorresponding(table, table, "ID < 3", "NAME", , "ID", rows, added, failed), True, "DbfFromDbfCorresponding without a field in common goes through"
same rows & " " & added & " " & listed(failed), "2 0 1,2", "without adding a row"
holds "that no row was added", "no field of the same name"
fails "DbfToDbf without such a source", f.DbfToDbf(nowhere, folder & ">new"), False, "nosuch"
fails "DbfToDbf without such a folder", f.DbfToDbf(table, folder & "\missing>new", "ID < 3"), False, "new|missing|does not exist"
fails "DbfToDbf onto its own source", f.DbfToDbf(table, table, "ID < 3"), False, "customers|program still holds"
fails "DbfToDbf to a name that leads elsewhere", f.DbfToDbf(table, folder & ">a:b", "ID < 3"), False, "a:b"
fails "DbfToDbf by a number", f.DbfToDbf(table, 5), False, "folder>table|5"
same f.DbfToDbf(table, folder & ">new", "ID < 3"), True, "DbfToDbf into a table that was not there"
same engine.LastError, "", "is no failure"

' ---- to text files
fails "DbfToDel without such a table", f.DbfToDel(nowhere, text), False, "nosuch"
fails "DbfToDel into a folder that is not there", f.DbfToDel(table, missing), False, "missing|rows.txt"
fails "DbfToDel onto a folder", f.DbfToDel(table, folder), False, folder & "|folder"
fails "DbfToDel without a file's name", f.DbfToDel(table, ""), False, "file"
fails "DbfToDel with a faulty condition", f.DbfToDel(table, text, "ID <"), False, "customers|ID <"
fails "DbfToDel of an unknown field", f.DbfToDel(table, text, "", "NOSUCH"), False, "customers|NOSUCH"
fails "DbfToFix without such a table", f.DbfToFix(nowhere, text), False, "nosuch"
fails "DbfToFix into a folder that is not there", f.DbfToFix(table, missing), False, "missing|rows.txt"
fails "DbfToFile under an unknown format", f.DbfToFile(table, text, , , , , "Comma"), False, "export format|Comma|Delimited"
fails "DbfToFile by a number", f.DbfToFile(7, text), False, "folder>table|7"

' ---- from text files
files.CreateTextFile(text).Write "90001,Somebody,,,,,SE,20260230,1,T" & vbCrLf & vbCrLf & "90002,""" & String(60, "x") & """" & vbCrLf & "90003,Fits" & vbCrLf
fails "DbfFromDel without such a file", f.DbfFromDel(table, folder & "\none.txt"), False, "none.txt|does not exist"
fails "DbfFromDel from a folder that is not there", f.DbfFromDel(table, missing), False, "missing|rows.txt"
fails "DbfFromDel from a folder", f.DbfFromDel(table, folder), False, folder & "|folder"
fails "DbfFromDel without such a table", f.DbfFromDel(nowhere, text), False, "nosuch"
fails "DbfFromDel to a table that can only be read", f.DbfFromDel(foreign, text), False, "foreign|only be read|.mdx"
fails "DbfFromDel of an unknown field", f.DbfFromDel(table, text, "", "NOSUCH"), False, "customers|NOSUCH"
same f.DbfFromDel(table, text, "ID <", "ID", , rows, added), True, "DbfFromDel with a faulty condition goes through"
same rows & " " & added, "3 0", "and takes no line"
holds "why", "condition|ID <|expected a value"
same f.DbfFromDel(table, text, "", , , rows, added, failed), True, "DbfFromDel with a line that does not fit goes through"
same rows & " " & added & " " & listed(failed), "3 2 2", "and takes the other lines"
holds "the line", "row 2|line 3|rows.txt|NAME|40"
fails "DbfFromFix without such a file", f.DbfFromFix(table, folder & "\none.txt"), False, "none.txt|does not exist"
fails "DbfFromFile under an unknown format", f.DbfFromFile(table, text, "", , , "Comma"), False, "import format|Comma|Delimited"
fails "DbfFromFile by a number", f.DbfFromFile(5, text), False, "folder>table|5"

' ---- windows
fails "DbfEdit without such a table", f.DbfEdit(nowhere), False, "nosuch"
fails "DbfEdit with a faulty condition", f.DbfEdit(table, "", "ID <"), False, "customers|ID <"
fails "DbfEdit with a width that is none", f.DbfEdit(table, "", "ID = 1", , 400, "wide"), False, "width|pixels|wide"
fails "DbfPick without such a table", f.DbfPick(nowhere), Empty, "nosuch"
fails "DbfPick with a faulty condition", f.DbfPick(table, "", "ID <"), Empty, "customers|ID <"

finish
