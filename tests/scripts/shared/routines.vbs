' Routines of a script called for each record, with an object of the script as their holder.
Option Explicit

Class Routines
    Public Calls
    Public Sum
    Public Function Add(amount)
        Calls = Calls + 1
        Sum = Sum + amount
        Add = True
    End Function
    Public Function StopAfterTwo()
        Calls = Calls + 1
        StopAfterTwo = (Calls < 3)
    End Function
    Public Sub Plain()
        Calls = Calls + 1
    End Sub
    Public Function TwoArguments(a, b)
        Calls = Calls + 1
        Sum = a & b
        TwoArguments = True
    End Function
End Class

Dim f, project, table, holder
Set f = CreateObject("ZuDBFFunctions.Functions")
Set project = CreateObject("Zuengine.Zuproject")
Set table = f.DbfOpen(fact("tables") & ">customers")

Set holder = New Routines
Set project.RoutineHolder = holder
same table.Process("Add", "COUNTRY = 'SE'", , 10, 5), 10, "Process answers the number of records"
same holder.Calls, 10, "the routine was called once for each"
same holder.Sum, 50, "with the argument"

Set holder = New Routines
Set project.RoutineHolder = holder
same table.Process("StopAfterTwo", "COUNTRY = 'SE'"), 2, "a routine that answers False ends the run"

Set holder = New Routines
Set project.RoutineHolder = holder
same table.Process("Plain", "COUNTRY = 'SE'", , 4), 4, "a Sub means go on"
same table.Process("TwoArguments", "COUNTRY = 'SE'", , 1, "x", "y"), 1, "several arguments arrive"
same holder.Sum, "xy", "in their order"
same table.Process("NoSuchRoutine", "COUNTRY = 'SE'"), 0, "an unknown routine processes nothing"

Set project.RoutineHolder = Nothing
same table.Process("Plain", "COUNTRY = 'SE'"), 0, "without a holder there are no routines"

finish
