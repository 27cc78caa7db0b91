' VisioFunctions with a Visio: it is running, others can be started. "Visio.Application" is the stand-in here.
Option Explicit

Const visSectionUser = 242

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

Dim v, s
Set v = WScript.CreateObject("TarnCom32.VisioFunctions")
Set s = WScript.CreateObject("TarnCom32.StringFunctions")
Reports

' ---- Attaching ----

Dim parameters, shape, page, document, visio, drawing, box, inner
parameters = "before "
v.GetVisioObjectsFromAddonString "/doc=1 rest", parameters
Check "parameters before Visio runs", parameters, "before "

Set visio = WScript.CreateObject("Visio.Application")
Set drawing = visio.Documents.Add("")
Set box = drawing.Pages.Add.DrawRectangle(0, 0, 2, 2)
box.Name = "Box"
box.Name = "Kiste"
v.GetVisioObjectsFromAddonString "/doc=1 /page=2 /shapeu=Box rest", parameters, Nothing, shape, page, document
Check "parameters from the running Visio", parameters, "before rest "
Check "document from the running Visio", document Is drawing, True
Check "page", page.Name, "Page-2"
Check "shape", shape Is box, True
Check "its name", shape.Name, "Kiste"

' What is not found keeps the caller's value.
v.GetVisioObjectsFromAddonString "/doc=1 /page=1 /shape=Box", parameters, visio, shape, page, document
Check "another page", page.Name, "Page-1"
Check "the shape as before", shape Is box, True

' ---- Walks ----

Dim kept
box.ConvertToGroup
Set inner = box.DrawRectangle(0, 0, 1, 1)
inner.AddNamedRow visSectionUser, "Application", 0
inner.Cells("User.Application").Formula = """Network"""
drawing.Pages(2).DrawRectangle 3, 3, 4, 4

Function NamesOf(subShapes, filter)
    Dim list, item
    Set list = s.CreateCollectionFromString("")
    v.GetAllTheShapesFromThePage drawing.Pages(2), list, subShapes, filter, "Network"
    NamesOf = ""
    For Each item In list
        NamesOf = NamesOf & item.Name & " "
    Next
End Function
Check "the page's shapes", NamesOf(False, False), "Kiste Sheet.3 "
Check "with those in groups", NamesOf(True, False), "Kiste Sheet.2 Sheet.3 "
Check "those of nobody", NamesOf(True, True), ""
Set kept = s.CreateCollectionFromString("")
v.GetAllTheShapesFromTheShape box, kept, False, True, "Network"
Check "those kept in the group", kept.Count, CLng(1)
Check "it is the same shape", kept.Item(1) Is inner, True
' An Add with another signature than a collection's.
v.GetAllTheShapesFromTheShape box, WScript.CreateObject("Scripting.Dictionary"), False, False, ""
Check "a walk into a dictionary", InStr(Reports, "GetAllTheShapesFromTheShape") > 0, True

' ---- Versions ----

Check "major version", v.WhichVisioMajorVersionIsThis(visio), CInt(16)
Check "of what is no application", v.WhichVisioMajorVersionIsThis(drawing), CInt(0)
Check "its report", Reports, Report("WhichVisioMajorVersionIsThis", 438, _
    "Object doesn't support this property or method: Document.Version")

Function VersionFails(wanted)
    VersionFails = v.TestForDocumentVersionCompatibility(drawing, wanted, 2, "too old", "too new", "Network")
End Function
Check "without a version", VersionFails("1"), False
drawing.DocumentSheet.AddNamedRow visSectionUser, "Version", 0
drawing.DocumentSheet.Cells("User.Version").Formula = """1.5"""
Check "the same version", VersionFails("1.5"), False
Check "no message so far", Reports, ""
Check "an older document", VersionFails("2"), True
Check "its message", Reports, "[Network] too old" & vbCrLf
Check "a newer document", VersionFails("1.4"), True
Check "its message", Reports, "[Network] too new" & vbCrLf
On Error Resume Next
VersionFails "new"
Check "a version that is no number", Err.Number, CLng(13)
Check "its description", Err.Description, "Type mismatch"
Err.Clear

' ---- Errors of the stand-in itself ----

visio.Documents.Open "C:\plan.vsdx"
Check "a drawing cannot be opened", Hex(Err.Number), "86DB089B"
Check "the text says why", Err.Description, _
    "This build of the stand-in reads no drawings. Add a blank document and draw in it."
Check "who says so", Err.Source, "TarnVisioStandIn"
Err.Clear
Set inner = box.Cells("Nowhere")
Check "a cell that is not there", Hex(Err.Number), "86DB03E9"
Check "its description", Err.Description, "Unexpected end of file"
Err.Clear
On Error GoTo 0

' ---- Handing a document over ----

v.MoveDocumentToVisio drawing
Check "the document has been closed", visio.Documents.Count, CInt(0)
Check "a drawing without file and template", Reports, _
    Report("MoveDocumentToVisio", 5, "Invalid parameter (no file was named)")
' The Visio that was started for it is running: attaching finds it when the first one is gone.
visio.Quit
parameters = ""
v.GetVisioObjectsFromAddonString "rest", parameters
Check "parameters from the second Visio", parameters, "rest "

If failures = 0 Then WScript.Echo "all checks passed"
