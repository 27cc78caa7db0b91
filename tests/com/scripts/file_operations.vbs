' Every member of FileOperations, called by a script.
Dim f, dialog, name, folder, base, extension, cancelled, path, stream
Set f = WScript.CreateObject("TarnCom32.FileOperations")

Check "TrimFileExtension", f.TrimFileExtension("C:\a\b.vsd"), "C:\a\b"
Check "TrimFileExtension with an object", f.TrimFileExtension("C:\a\b.vsd", files), "C:\a\b"
Check "TrimFilePath", f.TrimFilePath("C:\a\b.vsd"), "b.vsd"
Check "ShortenPath", f.ShortenPath("C:\first\second\third"), "C:\...\"
Check "ShortenFileName", f.ShortenFileName("short.vsd"), "short.vsd"
Check "IsValidExtension", f.IsValidExtension("a.VSD", ".vsd"), True
Check "IsFileExtensionInValidList", f.IsFileExtensionInValidList("a.vsd", ".vst.vsd"), True
Check "FindSystemFolder", Len(f.FindSystemFolder(26)) > 3, True
name = "a:b?c"
Check "CleanFileName", f.CleanFileName(name), "a_b_c"
Check "its variable", name, "a_b_c"
f.ParseFileAndPathName "C:\a\b.vsd", folder, name
Check "ParseFileAndPathName's folder", folder, "C:\a"
Check "ParseFileAndPathName's name", name, "b.vsd"
f.ParseFileNameAndExtension "b.vsd", base, extension
Check "ParseFileNameAndExtension's name", base, "b"
Check "ParseFileNameAndExtension's extension", extension, ".vsd"
Check "LimitFileNameLength", f.LimitFileNameLength("C:\a\b.vsd", 100), "C:\a\b.vsd"

Check "GetTempDirectory", f.GetTempDirectory(), files.GetSpecialFolder(2).Path & "\"
Check "GetTempFileName", Len(f.GetTempFileName()) > 0, True
path = f.GetTempPathFileName(files, ".txt")
Check "GetTempPathFileName", files.GetExtensionName(path), "txt"
f.SaveStreamToFile "written by a script", path, True
Set stream = files.OpenTextFile(path)
Check "SaveStreamToFile", stream.ReadAll, "written by a script"
Check "IsFileAlreadyOpened while it is", f.IsFileAlreadyOpened(path), True
stream.Close
Check "IsFileAlreadyOpened when it is not", f.IsFileAlreadyOpened(path), False
Check "IsFileReadOnly", f.IsFileReadOnly(path), False
Check "GetLongPath of the short one", LCase(f.GetLongPath(f.GetShortPath(path))), LCase(f.GetLongPath(path))
files.DeleteFile path

Set dialog = WScript.CreateObject("TarnCom32.CommonDlg")
dialog.MaxFileSize = 2 ' too small for the name: no dialog appears
cancelled = False
Check "GetSelectedFilename", f.GetSelectedFilename("Title", cancelled, "C:\a.vsd", "All|*.*", True, 1, dialog), ""
Check "its flag", cancelled, False
Check "its dialog", dialog.DialogTitle & dialog.FileName & dialog.InitDir, "Titlea.vsdC:"
