' Every member of CommonDlg, called by a script. No dialog appears: the buffer is too small for the name.
Option Explicit

Dim failures : failures = 0
Sub Check(what, actual, expected)
    If VarType(actual) = VarType(expected) Then If actual = expected Then Exit Sub
    failures = failures + 1
    WScript.Echo what & " gave " & actual & " (" & TypeName(actual) & "), not " & expected
End Sub

Dim d
Set d = WScript.CreateObject("TarnCom32.CommonDlg")

Check "Copies at first", d.Copies, CInt(1)
Check "FontSize at first", d.FontSize, CSng(8)
Check "MaxFileSize at first", d.MaxFileSize, CInt(260)
Check "Orientation at first", d.Orientation, CLng(1)
Check "PrinterDefault at first", d.PrinterDefault, True

d.FileName = "drawing.vsd" : Check "FileName", d.FileName, "drawing.vsd"
d.DialogTitle = "Title" : Check "DialogTitle", d.DialogTitle, "Title"
d.Filter = "Drawings|*.vsd" : Check "Filter", d.Filter, "Drawings|*.vsd"
d.DefaultExt = "vsd" : Check "DefaultExt", d.DefaultExt, "vsd"
d.InitDir = "C:\" : Check "InitDir", d.InitDir, "C:\"
d.Color = 255 : Check "Color", d.Color, CLng(255)
d.Flags = 4096 : Check "Flags", d.Flags, CLng(4096)
d.FontName = "Arial" : Check "FontName", d.FontName, "Arial"
d.FontBold = True : Check "FontBold", d.FontBold, True
d.FontItalic = True : Check "FontItalic", d.FontItalic, True
d.FontStrikeThru = True : Check "FontStrikeThru", d.FontStrikeThru, True
d.FontUnderLine = True : Check "FontUnderLine", d.FontUnderLine, True
d.FromPage = 1 : Check "FromPage", d.FromPage, CInt(1)
d.ToPage = 2 : Check "ToPage", d.ToPage, CInt(2)
d.Min = 3 : Check "Min", d.Min, CInt(3)
d.Max = 4 : Check "Max", d.Max, CInt(4)
d.Copies = 5 : Check "Copies", d.Copies, CInt(5)
d.CancelError = True : Check "CancelError", d.CancelError, True
d.HelpFile = "help" : Check "HelpFile", d.HelpFile, "help"
d.HelpCommand = 6 : Check "HelpCommand", d.HelpCommand, CLng(6)
d.HelpKey = "key" : Check "HelpKey", d.HelpKey, "key"
d.PrinterDefault = False : Check "PrinterDefault", d.PrinterDefault, False
d.FilterIndex = 1 : Check "FilterIndex", d.FilterIndex, CInt(1)
d.HelpContext = 7 : Check "HelpContext", d.HelpContext, CLng(7)
d.FontSize = 9.5 : Check "FontSize", d.FontSize, CSng(9.5)
d.Action = 8 : Check "Action", d.Action, CInt(8)
d.MaxFileSize = 5 : Check "MaxFileSize", d.MaxFileSize, CInt(5)
d.hDC = 9 : Check "hDC", d.hDC, CLng(9)
d.FileTitle = "file" : Check "FileTitle", d.FileTitle, "file"
d.Orientation = 2 : Check "Orientation", d.Orientation, CLng(2)
d.Tag = "tag" : Check "Tag", d.Tag, "tag"
d.OwnerWindow = 0 : Check "OwnerWindow", d.OwnerWindow, CLng(0)
d.Instance = 10 : Check "Instance", d.Instance, CLng(10)

On Error Resume Next
d.ShowOpen
Check "ShowOpen with a name that does not fit", Err.Number, CLng(5)
Err.Clear
d.ShowSave
Check "ShowSave likewise", Err.Number, CLng(5)
Err.Clear
d.Copies = 40000
Check "a number of more than 16 bits", Err.Number, CLng(6)
Err.Clear
d.Copies = "many"
Check "a text that is no number", Err.Number, CLng(13)
On Error GoTo 0

If failures = 0 Then WScript.Echo "all checks passed"
