' Every member of VisioFunctions, called by a script where no Visio is running.
Option Explicit

Dim failures : failures = 0
Sub Check(what, actual, expected)
    If VarType(actual) = VarType(expected) Then If actual = expected Then Exit Sub
    failures = failures + 1
    WScript.Echo what & " gave " & actual & " (" & TypeName(actual) & "), not " & expected
End Sub

' What was reported since the last time: the text of the message boxes.
Function Reports()
    Dim files, file
    Set files = WScript.CreateObject("Scripting.FileSystemObject")
    Reports = ""
    If Not files.FileExists(WScript.Arguments(0)) Then Exit Function
    Set file = files.OpenTextFile(WScript.Arguments(0))
    Reports = file.ReadAll
    file.Close
    files.DeleteFile WScript.Arguments(0)
End Function

Function Report(member, number, description)
    Report = "[TarnCom32] Problem in VisioFunctions." & member & vbCrLf & "Error Number: " & number & vbCrLf & _
        "Error Description: " & description & vbCrLf
End Function

Dim v, parameters, shape, page, document, c, notSet
Set v = WScript.CreateObject("TarnCom32.VisioFunctions")
Set c = WScript.CreateObject("TarnCom32.StringFunctions").CreateCollectionFromString("one!1")
notSet = "Object variable or With block variable not set"
Reports

parameters = "before "
v.GetVisioObjectsFromAddonString "/doc=1 rest", parameters, Nothing, shape, page, document
Check "GetVisioObjectsFromAddonString without Visio", parameters, "before "
Check "its document", IsObject(document) Or IsEmpty(document), True
Check "WhichVisioMajorVersionIsThis", v.WhichVisioMajorVersionIsThis(Nothing), CInt(0)
Check "its report", Reports, Report("WhichVisioMajorVersionIsThis", 91, notSet)
v.GetAllTheShapesFromThePage Nothing, c, True, False, ""
Check "GetAllTheShapesFromThePage", Reports, Report("GetAllTheShapesFromThePage", 91, notSet)
v.GetAllTheShapesFromTheShape Nothing, c, True, False, ""
Check "GetAllTheShapesFromTheShape", Reports, Report("GetAllTheShapesFromTheShape", 91, notSet)
v.MoveDocumentToVisio Nothing
Check "MoveDocumentToVisio", Reports, Report("MoveDocumentToVisio", 429, "ActiveX component can't create object")
Check "the collection", c.Count, CLng(1)

On Error Resume Next
v.TestForDocumentVersionCompatibility Nothing, "1", 2, "old", "new", "application"
Check "TestForDocumentVersionCompatibility", Err.Number, CLng(91)
Check "its description", Err.Description, notSet
On Error GoTo 0

If failures = 0 Then WScript.Echo "all checks passed"
