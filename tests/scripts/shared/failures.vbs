' Files that are no tables, names that do not exist: failure values, and the reason in LastError.
Option Explicit

Dim f, project, tables, names, name
Set f = CreateObject("ZuDBFFunctions.Functions")
Set project = CreateObject("Zuengine.Zuproject")
tables = fact("tables")

For Each name In Array("empty", "cut-header", "text", "nosuch")
    project.ClearLastError
    same f.DbfCount(tables & ">" & name), -1, "DbfCount of " & name & " is -1"
    ok f.DbfOpen(tables & ">" & name) Is Nothing, "DbfOpen of " & name & " answers Nothing"
    ok f.DbfSelect(tables & ">" & name) Is Nothing, "DbfSelect of " & name & " answers Nothing"
    ok f.DbfLookup(tables & ">" & name, 1) Is Nothing, "DbfLookup of " & name & " answers Nothing"
    ok f.DbfVarDeclare(tables & ">" & name) Is Nothing, "DbfVarDeclare of " & name & " answers Nothing"
    ok InStr(1, project.LastError, name, 1) > 0, "LastError names " & name
Next

' What can be read of a table that is cut off can be read; nothing is made up.
ok f.DbfCount(tables & ">cut-records") < 100, "a table that is cut off has fewer records"
ok f.DbfCount(tables & ">lying") < 100, "a count in the header beyond the end of the file is not believed"

project.ClearLastError
same f.DbfCount(tables & ">customers", "CREDIT > > 5"), -1, "a faulty condition fails"
ok Len(project.LastError) > 0, "LastError tells about the condition"
project.ClearLastError
same f.DbfCount(tables & ">customers", "NOSUCHFIELD = 1"), -1, "an unknown field fails"
ok InStr(1, project.LastError, "NOSUCHFIELD", 1) > 0, "LastError names the field"
project.ClearLastError
same project.LastError, "", "ClearLastError forgets"

same f.DbfCount(""), -1, "an empty definition fails"
same f.DbfCount(Null), -1, "Null fails"
same f.DbfCount(Empty), -1, "Empty fails"
same f.DbfCount(Nothing), -1, "Nothing fails"
same f.DbfCount(Array()), -1, "an empty array fails"
same f.DbfCount(tables & ">..\..\etc\passwd"), -1, "a name that climbs out of its folder fails"
same f.DbfCount(tables & ">" & String(5000, "x")), -1, "an endless name fails"

finish
