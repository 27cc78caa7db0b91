' What an add-in does when a user calls it, on a drawing in the Visio stand-in: the session of "tarn session", as a
' script. With TarnCom32.dll and TarnVisioStandIn.dll registered:
'     cscript //nologo addin_session.vbs
' It prints what addin_session.txt holds.
Option Explicit

Const visSectionUser = 242
Const visTypeOfShape = 17 ' ObjectType
Const failOnBoth = 2      ' eTEST_DOCUMENT_COMPATIBILITY

Dim functions, strings
Set functions = WScript.CreateObject("TarnCom32.VisioFunctions")
Set strings = WScript.CreateObject("TarnCom32.StringFunctions")

' ---- The drawing ----

Sub SetUserCell(sheet, row, text)
    sheet.AddNamedRow visSectionUser, row, 0
    sheet.Cells("User." & row).Formula = """" & text & """"
End Sub

' The first name that a shape gets is its universal one too.
Function Named(shape, universalName, localName)
    shape.Name = universalName
    shape.Name = localName
    Set Named = shape
End Function

Sub BuildDrawing(visio)
    Dim document, page, master, room, rack
    Set document = visio.Documents.Add("")
    SetUserCell document.DocumentSheet, "Version", "1.4"
    Set master = document.Masters.Add
    master.Name = "Workstation"
    master.DrawRectangle 0, 0, 1, 1

    Set page = Named(document.Pages.Item(1), "Ground floor", "Erdgeschoss")
    Set room = Named(page.DrawRectangle(1, 1, 5, 4), "Server room", "Serverraum")
    SetUserCell room, "Application", "OfficeNetwork"
    room.ConvertToGroup
    Set rack = Named(room.DrawRectangle(1, 1, 2, 3), "Rack 1", "Gestell 1")
    SetUserCell rack, "Application", "OfficeNetwork"
    rack.ConvertToGroup
    Named rack.DrawRectangle(1, 1, 2, 2), "Switch", "Switch"
    SetUserCell rack.Shapes.Item("Switch"), "Application", "OfficeNetwork"
    rack.DrawRectangle 1, 2, 2, 3
    room.Drop master, 4, 2
    page.Drop master, 7, 2
    SetUserCell page.Drop(master, 7, 4), "Application", "OfficeNetwork"
    page.DrawRectangle 0, 0, 9, 6

    document.Pages.Add.Name = "Upper floor"
    document.Pages.Item(2).DrawRectangle 2, 2, 3, 3
End Sub

' ---- The session ----

Function BothNames(thing)
    BothNames = thing.Name
    If thing.NameU <> thing.Name Then BothNames = BothNames & " (" & thing.NameU & ")"
End Function

Function DepthOf(shape)
    Dim around
    DepthOf = 0
    Set around = shape.Parent
    Do While around.ObjectType = visTypeOfShape
        DepthOf = DepthOf + 1
        Set around = around.Parent
    Loop
End Function

Function CheckedVersion(document, wanted, application)
    Dim version, failed
    CheckedVersion = "not checked"
    If wanted = "" Then Exit Function
    version = document.DocumentSheet.Cells("User.Version").ResultStr("")
    failed = functions.TestForDocumentVersionCompatibility(document, wanted, failOnBoth, _
        "The document's version " & version & " is older than " & wanted & ".", _
        "The document's version " & version & " is newer than " & wanted & ".", application)
    CheckedVersion = version & ", wanted " & wanted & ": suits"
    If failed Then CheckedVersion = version & ", wanted " & wanted & ": does not suit"
End Function

' The shapes inside `shape`, or of the page where there is none.
Sub Walk(page, shape, list, subShapes, filter, application)
    If shape Is Nothing Then
        functions.GetAllTheShapesFromThePage page, list, subShapes, filter, application
    Else
        functions.GetAllTheShapesFromTheShape shape, list, subShapes, filter, application
    End If
End Sub

Function Padded(text, columns)
    Padded = text & Space(columns - Len(text))
End Function

Function Has(list, shape)
    Dim item
    Has = False
    For Each item In list
        If item Is shape Then Has = True
    Next
End Function

Function Indented(shape)
    Indented = Space(2 * DepthOf(shape)) & shape.Name
End Function

Sub PrintShapes(all, kept)
    Dim shape, columns, mark
    columns = Len("Name")
    For Each shape In all
        If Len(Indented(shape)) > columns Then columns = Len(Indented(shape))
    Next
    WScript.Echo ""
    WScript.Echo "Depth  Kept  " & Padded("Name", columns) & "  Universal name"
    For Each shape In all
        mark = "no    "
        If Has(kept, shape) Then mark = "yes   "
        WScript.Echo Padded(DepthOf(shape), 5) & "  " & mark & Padded(Indented(shape), columns) & "  " & shape.NameU
    Next
End Sub

Sub RunSession(visio, addonString, wantedVersion, application)
    Dim parameters, shape, page, document, all, kept, place
    parameters = ""
    Set shape = Nothing
    functions.GetVisioObjectsFromAddonString addonString, parameters, visio, shape, page, document
    WScript.Echo "Drawing: " & document.FullName
    WScript.Echo "Visio: " & visio.Version & ", major version " & functions.WhichVisioMajorVersionIsThis(visio)
    WScript.Echo "Add-on string: " & addonString
    If parameters = "" Then parameters = "none" Else parameters = """" & parameters & """"
    WScript.Echo "Parameters: " & parameters
    WScript.Echo "Document: " & document.Name
    WScript.Echo "Page: " & BothNames(page)
    place = "none"
    If Not shape Is Nothing Then place = BothNames(shape)
    WScript.Echo "Shape: " & place
    WScript.Echo "Version: " & CheckedVersion(document, wantedVersion, application)

    Set all = strings.CreateCollectionFromString("")
    Set kept = strings.CreateCollectionFromString("")
    Walk page, shape, all, True, False, application
    Walk page, shape, kept, True, True, application
    place = " on the page, "
    If Not shape Is Nothing Then place = " inside the shape, "
    WScript.Echo "Shapes: " & all.Count & place & kept.Count & " kept for " & application
    PrintShapes all, kept
End Sub

Dim visio
Set visio = WScript.CreateObject("TarnVisioStandIn.Application")
BuildDrawing visio
RunSession visio, "/doc=1 /page=1 /verbose", "1.4", "OfficeNetwork"
WScript.Echo ""
RunSession visio, "/doc=1 /page=1 /shape=Serverraum", "", "OfficeNetwork"
visio.Quit
