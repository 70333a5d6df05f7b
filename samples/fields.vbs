' Shows the fields of a table and the values of its first record:
'   ./zu run samples/fields.vbs TABLE                 e.g. build/demo/customers
Option Explicit
Dim view, field, text
Set view = DbfSelect(Args(0), "", , 1)
If view Is Nothing Then
    Echo "not opened: " & Engine.LastError
    Quit 1
End If

Echo "name        type  size  dec  value"
For Each field In view.Fields
    text = "(null)"
    If view.RecordCount > 0 Then
        If Not IsNull(field.Value) Then text = CStr(field.Value)
    End If
    Echo Left(field.Name & Space(12), 12) & Right(Space(4) & field.Type, 4) & Right(Space(6) & field.Size, 6) & _
         Right(Space(5) & field.Decimals, 5) & "  " & text
Next
