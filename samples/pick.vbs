' Lets the user pick one record and works on with it:
'   zurun pick.vbs FOLDER
Option Explicit

Dim customer, number
Set customer = DbfPick(Args(0) & ">customers", "Whose orders?", "(ACTIVE)", 420, 760, , , "ID,NAME,CITY,COUNTRY")
If customer Is Nothing Then
    Echo "Nobody was picked."
    Quit 1
End If

number = customer("ID").Value
Echo customer("NAME").Value & ", " & customer("CITY").Value & ": " & _
     DbfCount(Args(0) & ">orders", "CUSTOMER = " & number) & " orders"
