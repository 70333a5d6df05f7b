' Opens the grid on a table: browse, edit, add, delete, undelete, search. Run by ./zu demo --window, or
'   zurun edit.vbs FOLDER [TABLE [CONDITION]]        the table is customers unless another one is named
Option Explicit

Dim table, title, condition
table = "customers"
condition = ""
If Args.Count > 1 Then table = Args(1)
If Args.Count > 2 Then condition = Args(2)
title = UCase(Left(table, 1)) & Mid(table, 2)

' The arguments behind the condition: Enter goes down, 480 pixels high, 860 wide, centred, all fields, deleted
' records can be taken back.
If DbfEdit(Args(0) & ">" & table, title, condition, "DOWN", 480, 860, -1, -1, , True) Then
    Echo DbfCount(Args(0) & ">" & table) & " records are in " & table & " now"
Else
    Echo "The grid could not be opened: " & Engine.LastError
    Quit 1
End If
