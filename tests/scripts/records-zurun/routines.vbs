' Under zurun the script's own routines are called, and the functions need no object.
Option Explicit
Dim table, calls
table = fact("scratch") & ">customers"

Function Correct(city)
    calls = calls + 1
    Correct = DbfReplace("CITY", city, "ACTIVE", Not Engine.CurrentView("ACTIVE").Value)
End Function

Sub Walk()
    calls = calls + 1
End Sub

Function Outer()
    Outer = (DbfProcess(table, "Correct", "ID = 9", , , "inner") = 1) And DbfReplace("CITY", "outer")
End Function

same DbfProcess(table, "Correct", "ID = 5 OR ID = 6", , , "Corrected"), 2, "routines of the script are called by name"
same DbfCount(table, "CITY = 'Corrected'"), 2, "and replace values"
calls = 0
same DbfProcess(table, "Walk", "", , 50), 50, "a Sub goes on with every record"
same calls, 50, "once each"
same DbfProcess(table, "Outer", "ID = 1 OR ID = 2"), 2, "routines may process"
same DbfCount(table, "CITY = 'inner'") & DbfCount(table, "CITY = 'outer'"), "12", "inside one another"
finish
