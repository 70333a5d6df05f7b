Attribute VB_Name = "UnpaidOrders"
' Fills the active sheet with the unpaid orders above an amount, and lets the user pick a customer.
' Import this file in the VBA editor of Excel (File, Import File), then run ListUnpaid. The package is installed, or register.cmd
' of the zip was run. The folder holds orders.dbf and customers.dbf, made by zugenerate.
Option Explicit

Private Const Folder As String = "C:\demo"

Public Sub ListUnpaid()
    Dim functions As Object, view As Object, line As Long
    Set functions = CreateObject("ZuDBFFunctions.Functions")
    Set view = functions.DbfSelect(Folder & ">orders", "NOT PAID AND AMOUNT > 9500", "ID,CUSTOMER,ORDERED,AMOUNT")
    If view Is Nothing Then
        MsgBox LastError, vbExclamation
        Exit Sub
    End If

    ActiveSheet.Cells.ClearContents
    ActiveSheet.Range("A1:D1").Value = Array("Order", "Customer", "Ordered", "Amount")
    line = 2
    Do Until view.Eof
        ActiveSheet.Cells(line, 1).Value = view("ID").Value
        ActiveSheet.Cells(line, 2).Value = CustomerName(functions, view("CUSTOMER").Value)
        ActiveSheet.Cells(line, 3).Value = view("ORDERED").Value
        ActiveSheet.Cells(line, 4).Value = view("AMOUNT").Value
        view.MoveNext
        line = line + 1
    Loop
End Sub

Public Sub PickCustomer()
    Dim functions As Object, customer As Object
    Set functions = CreateObject("ZuDBFFunctions.Functions")
    Set customer = functions.DbfPick(Folder & ">customers", "Whose orders?", "(ACTIVE)")
    If customer Is Nothing Then Exit Sub
    ActiveCell.Value = customer("NAME").Value
End Sub

' A number is a key of the default index of the customers.
Private Function CustomerName(functions As Object, number As Variant) As String
    Dim customer As Object
    Set customer = functions.DbfLookup(Folder & ">customers", number)
    CustomerName = "(deleted)"
    If Not customer Is Nothing Then
        If customer.RecordCount > 0 Then CustomerName = functions.DbfFieldValue(customer("NAME"))
    End If
End Function

Private Function LastError() As String
    LastError = CreateObject("Zuengine.Zuproject").LastError
End Function
