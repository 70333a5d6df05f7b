' Merges one table into another of the same kind and reports the rows that were not taken.
'   ./zu run samples/merge.vbs FROM INTO [CONDITION]      e.g. build/demo>customers build/demo>archive "NOT ACTIVE"
Option Explicit
If Args.Count < 2 Then
    Echo "merge.vbs FROM INTO [CONDITION]"
    Quit 64
End If

Dim condition, done, rows, added, failed, row
condition = ""
If Args.Count > 2 Then condition = Args(2)

If DbfOpen(Args(1)) Is Nothing Then
    ' The engine has said that it is not there. The first time it is made, with the fields and the index of the other one.
    done = DbfToDbf(Args(0), Args(1), condition, , , rows, added, failed)
Else
    done = DbfFromDbfCorresponding(Args(1), Args(0), condition, , , , rows, added, failed)
End If

Echo added & " of " & rows & " rows added"
If IsArray(failed) Then
    For Each row In failed
        Echo "  row " & row & " was not taken"
    Next
End If
If Not done Then
    Echo "the merge did not come to its end: " & Engine.LastError
    Quit 1
End If
