' The WScript object that scripts written for cscript expect.
Option Explicit

Dim dictionary, description
ok Len(WScript.Name) > 0, "Name"
same WScript.Version, "5.8", "Version"
same WScript.ScriptName, "wscript.vbs", "ScriptName is the file name"
same Right(WScript.ScriptFullName, 12), "\wscript.vbs", "ScriptFullName is the whole path"
same LCase(Right(WScript.FullName, 10)), "\zurun.exe", "FullName is the program"
same WScript.FullName, WScript.Path & "\zurun.exe", "Path is its folder"
same WScript.Application.Version, "5.8", "Application is the object itself"
WScript.Timeout = 5
same WScript.Timeout, 5, "Timeout is kept"
WScript.Interactive = False
ok Not WScript.Interactive, "Interactive is kept"
same WScript.Arguments(0), "tables=" & fact("tables"), "Arguments(i)"
same WScript.Arguments.Unnamed.Count, WScript.Arguments.Count, "Unnamed arguments"
same WScript.Arguments.Named.Count, 0, "Named arguments"
Set dictionary = WScript.CreateObject("Scripting.Dictionary")
dictionary("a") = 1
same dictionary.Count, 1, "CreateObject makes an object"

On Error Resume Next
WScript.CreateObject "No.Such.Class"
description = Err.Description
ok Err.Number <> 0, "CreateObject of an unknown class is an error"
ok InStr(description, "No.Such.Class") > 0, "that names the class"
Err.Clear
WScript.ConnectObject dictionary, "d_"
ok Err.Number <> 0, "ConnectObject of an object without events is an error"
Err.Clear
WScript.Arguments.Item 999
same Err.Number, 9, "an argument that is not there is error 9"
Err.Clear
WScript.NoSuchMember
same Err.Number, 438, "an unknown member is error 438"
On Error Goto 0

WScript.Sleep 1
WScript.DisconnectObject dictionary
ok True, "Sleep and DisconnectObject come back"

finish
