' The same component from a script host that knows nothing of it (cscript, or any automation client):
'   cscript //nologo with-cscript.vbs TABLE           after regsvr32 Zuengine.dll and regsvr32 ZuDBFFunctions.dll
Option Explicit
Dim functions
Set functions = CreateObject("ZuDBFFunctions.Functions")
WScript.Echo functions.DbfCount(WScript.Arguments(0)) & " records in " & WScript.Arguments(0)
