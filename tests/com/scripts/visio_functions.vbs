' Every member of VisioFunctions, called by a script: without any Visio, then with the stand-in as "Visio.Application".
Const visSectionUser = 242, visioKey = "HKLM\Software\Classes\Visio.Application"

Dim v, s, parameters, shape, page, document, visio, drawing, box, inner, kept, notSet
Reg "delete " & visioKey & " /f"
Reports
Set v = WScript.CreateObject("TarnCom32.VisioFunctions")
Set s = WScript.CreateObject("TarnCom32.StringFunctions")
notSet = "Object variable or With block variable not set"

parameters = "before "
v.GetVisioObjectsFromAddonString "/doc=1 rest", parameters
Check "parameters before Visio runs", parameters, "before "
Check "WhichVisioMajorVersionIsThis of none", v.WhichVisioMajorVersionIsThis(Nothing), CInt(0)
v.GetAllTheShapesFromThePage Nothing, s.CreateCollectionFromString("one!1"), True, False, ""
v.GetAllTheShapesFromTheShape Nothing, s.CreateCollectionFromString("one!1"), True, False, ""
v.MoveDocumentToVisio Nothing
Check "what was reported", Reports, Report("VisioFunctions.WhichVisioMajorVersionIsThis", 91, notSet) & _
    Report("VisioFunctions.GetAllTheShapesFromThePage", 91, notSet) & _
    Report("VisioFunctions.GetAllTheShapesFromTheShape", 91, notSet) & _
    Report("VisioFunctions.MoveDocumentToVisio", 429, "ActiveX component can't create object")
On Error Resume Next
v.TestForDocumentVersionCompatibility Nothing, "1", 2, "old", "new", "application"
CheckError "TestForDocumentVersionCompatibility of none", 91, notSet
On Error GoTo 0

' ---- Attaching to the one that is running ----

Reg "add " & visioKey & "\CLSID /ve /d {29ED9619-1CBA-409C-902D-9CB9EB8D3756} /f"
Set visio = WScript.CreateObject("Visio.Application")
Set drawing = visio.Documents.Add("")
Set box = drawing.Pages.Add.DrawRectangle(0, 0, 2, 2)
box.Name = "Box"
box.Name = "Kiste"
v.GetVisioObjectsFromAddonString "/doc=1 /page=2 /shapeu=Box rest", parameters, Nothing, shape, page, document
Check "parameters from the running Visio", parameters, "before rest "
Check "document from the running Visio", document Is drawing, True
Check "its page", page.Name, "Page-2"
Check "its shape", shape Is box, True

' ---- Walks ----

box.ConvertToGroup
Set inner = box.DrawRectangle(0, 0, 1, 1)
inner.AddNamedRow visSectionUser, "Application", 0
inner.Cells("User.Application").Formula = """Network"""
drawing.Pages(2).DrawRectangle 3, 3, 4, 4
Set kept = s.CreateCollectionFromString("")
v.GetAllTheShapesFromThePage drawing.Pages(2), kept, True, False, ""
Check "the page's shapes", kept.Item(1).Name & kept.Item(2).Name & kept.Item(3).Name, "KisteSheet.2Sheet.3"
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
Check "its report", Reports, Report("VisioFunctions.WhichVisioMajorVersionIsThis", 438, _
    "Object doesn't support this property or method: Document.Version")
drawing.DocumentSheet.AddNamedRow visSectionUser, "Version", 0
drawing.DocumentSheet.Cells("User.Version").Formula = """1.5"""
Check "a newer document", v.TestForDocumentVersionCompatibility(drawing, "1.4", 2, "old", "new", "Network"), True
Check "its message", Reports, "[Network] new" & vbCrLf

' ---- Errors of the stand-in itself ----

On Error Resume Next
visio.Documents.Open "C:\plan.vsdx"
Check "who says that a drawing cannot be opened", Err.Source, "TarnVisioStandIn"
CheckError "a drawing that cannot be opened", &H86DB089B, _
    "This build of the stand-in reads no drawings. Add a blank document and draw in it."
Set inner = box.Cells("Nowhere")
CheckError "a cell that is not there", &H86DB03E9, "Unexpected end of file"

' ---- Handing a document over ----

v.MoveDocumentToVisio drawing
Check "the document has been closed", visio.Documents.Count, CInt(0)
Check "a drawing without file and template", Reports, _
    Report("VisioFunctions.MoveDocumentToVisio", 5, "Invalid parameter (no file was named)")
visio.Quit
page = page.Shapes.Count
CheckError "a page of a Visio that has quit", &H86DB089D, ""
On Error GoTo 0
' The Visio that was started for the document is running.
parameters = ""
v.GetVisioObjectsFromAddonString "rest", parameters
Check "parameters from the second Visio", parameters, "rest "
Reg "delete " & visioKey & " /f"
