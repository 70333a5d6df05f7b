' Objects and variables by reference in every wrapping, and what travels back.
Option Explicit

Dim customers, view, field, record, control, rows, added, failed, name, key
customers = fact("tables") & ">customers"
Set view = DbfSelect(customers, "", "", 3)
Set record = DbfVarDeclare(customers)
Set control = CreateObject("ZuDBFFunctions.ZuDbfControl")

Probe.DbfTop view
same Last, "DbfTop(view)", "a view in a variable"
Probe.DbfTop (view)
same Last, "DbfTop(view)", "a view by value"
Probe.DbfTop DbfSelect(customers, "", "", 1)
same Last, "DbfTop(view)", "a view made on the spot"
Probe.DbfVarReset record
same Last, "DbfVarReset(view)", "an object parameter: a variable"
Probe.DbfVarReset DbfVarDeclare(customers)
same Last, "DbfVarReset(view)", "an object parameter: made on the spot"
Set field = view("ID")
Probe.DbfFieldValue field
same Last, "DbfFieldValue(field)", "a field in a variable"
Probe.DbfFieldValue view("NAME")
same Last, "DbfFieldValue(field)", "a field from its view"
Probe.DbfFieldValue view.Fields(0)
same Last, "DbfFieldValue(field)", "a field from the collection"
Probe.DbfFieldValue Nothing
same Last, "DbfFieldValue(Nothing)", "Nothing for an object"
Probe.DbfAddNew "t", record
same Last, "DbfAddNew('t', view)", "DbfAddNew with a record variable"
key = 5
Probe.DbfConditionalAddNew "t", record, key
same Last, "DbfConditionalAddNew('t', view, 5)", "DbfConditionalAddNew with variables"
Probe.DbfToDel "s", "file", , , , control
same Last, "DbfToDel('s', 'file', missing, missing, 0, control)", "a control in a variable"
Probe.DbfToDel "s", "file", , , , CreateObject("ZuDBFFunctions.ZuDbfControl")
same Last, "DbfToDel('s', 'file', missing, missing, 0, control)", "a control made on the spot"

' --- written back
Probe.DbfFromDbf "d", "s", , , , , rows, added, failed
same rows, 11, "RowCount travels back into a variable"
same added, 12, "AddedCount travels back"
same failed, 13, "FailedRowIndexes travels back"
rows = Empty
added = "before"
Probe.DbfToDbf "s", "d", , , , rows
same rows, 11, "one of three by itself"
same added, "before", "what was not given is not touched"
Probe.DbfFromDel "d", "file", , , , rows, added, failed
same rows & "," & added & "," & failed, "11,12,13", "of an import too"
name = "Delimited"
Probe.DbfFromFile "d", "file", , , , name, rows
same name, "changed", "a text by reference travels back"
Probe.DbfFromDbf "d", "s", , , , , 1, 2, 3
ok True, "literals in their place do no harm"

' --- conversions
Probe.DbfSelect "t", "c", "f", "5"
same Last, "DbfSelect('t', 'c', 'f', 5)", "a text that is a number becomes one"
Probe.DbfCount "t", 42
same Last, "DbfCount('t', '42')", "a number becomes a text"
Probe.DbfDelete "t", "k", 0, 2.0
same Last, "DbfDelete('t', 'k', False, 2)", "a number becomes a truth value"
Probe.DbfOpen Null
same Last, "DbfOpen(Null)", "Null stays Null"
Probe.DbfOpen Empty
same Last, "DbfOpen(Empty)", "Empty stays Empty"
Probe.DbfOpen Array("a", "b")
same Last, "DbfOpen(['a', 'b'])", "an array is a definition"

' --- refused
On Error Resume Next
Probe.DbfOpen "a", "b"
same Err.Number, 450, "too many arguments are refused"
Err.Clear
Probe.DbfCleanup
ok Err.Number = 449 Or Err.Number = 450, "a missing argument is refused"
Err.Clear
Probe.DbfSelect "t", "c", "f", "five"
same Err.Number, 13, "a text that is no number is a type mismatch"
Err.Clear
Probe.DbfVarReset "text"
same Err.Number, 13, "a text for an object is a type mismatch"
Err.Clear
Probe.DbfNoSuch "t"
same Err.Number, 438, "an unknown function is refused"
Err.Clear
On Error Goto 0

finish
