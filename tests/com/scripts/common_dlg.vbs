' Every member of CommonDlg, called by a script. No dialog appears: the buffer is too small for the name.
Dim d
Set d = WScript.CreateObject("TarnCom32.CommonDlg")

Check "Copies at first", d.Copies, CInt(1)
Check "FontSize at first", d.FontSize, CSng(8)
Check "MaxFileSize at first", d.MaxFileSize, CInt(260)
Check "Orientation at first", d.Orientation, CLng(1)
Check "PrinterDefault at first", d.PrinterDefault, True

d.FileName = "a" : d.DialogTitle = "b" : d.Filter = "c" : d.DefaultExt = "d" : d.InitDir = "e"
d.FontName = "f" : d.HelpFile = "g" : d.HelpKey = "h" : d.FileTitle = "i" : d.Tag = "j"
CheckRow "texts", Array(d.FileName, d.DialogTitle, d.Filter, d.DefaultExt, d.InitDir, d.FontName, d.HelpFile, _
    d.HelpKey, d.FileTitle, d.Tag), "a"
d.FromPage = 2 : d.ToPage = 3 : d.Min = 4 : d.Max = 5 : d.Copies = 6 : d.FilterIndex = 7 : d.Action = 8 : d.MaxFileSize = 9
CheckRow "short numbers", Array(d.FromPage, d.ToPage, d.Min, d.Max, d.Copies, d.FilterIndex, d.Action, d.MaxFileSize), _
    CInt(2)
d.Orientation = 2 : d.Color = 3 : d.Flags = 4 : d.HelpCommand = 5 : d.HelpContext = 6 : d.hDC = 7 : d.Instance = 8
CheckRow "numbers", Array(d.Orientation, d.Color, d.Flags, d.HelpCommand, d.HelpContext, d.hDC, d.Instance), CLng(2)
d.CancelError = True : Check "CancelError", d.CancelError, True
d.FontBold = True : Check "FontBold", d.FontBold And Not d.FontItalic, True
d.FontItalic = True : Check "FontItalic", d.FontItalic And Not d.FontStrikeThru, True
d.FontStrikeThru = True : Check "FontStrikeThru", d.FontStrikeThru And Not d.FontUnderLine, True
d.FontUnderLine = True : Check "FontUnderLine", d.FontUnderLine, True
d.PrinterDefault = False : Check "PrinterDefault", d.PrinterDefault, False
d.OwnerWindow = 0 : Check "OwnerWindow", d.OwnerWindow, CLng(0)
d.FontSize = 9.5 : Check "FontSize", d.FontSize, CSng(9.5)

On Error Resume Next
d.FileName = "drawing.vsd"
d.MaxFileSize = 5
d.ShowOpen
CheckError "ShowOpen with a name that does not fit", 5, ""
d.ShowSave
CheckError "ShowSave likewise", 5, ""
d.Copies = 40000
CheckError "a number of more than 16 bits", 6, ""
d.Copies = "many"
CheckError "a text that is no number", 13, ""
