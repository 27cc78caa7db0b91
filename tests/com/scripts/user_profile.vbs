' Every member of UserProfile, its entries and an entry, called by a script.
Option Explicit

Dim failures : failures = 0
Sub Check(what, actual, expected)
    If VarType(actual) = VarType(expected) Then If actual = expected Then Exit Sub
    failures = failures + 1
    WScript.Echo what & " gave " & actual & " (" & TypeName(actual) & "), not " & expected
End Sub

Const HKEY_CURRENT_USER = &H80000001
Dim shell, profile, entries, entry, other, names, again
Set shell = WScript.CreateObject("WScript.Shell")
Set profile = WScript.CreateObject("TarnCom32.UserProfile")

profile.StorageMethod = 0
Check "StorageMethod", profile.StorageMethod, CLng(0)
profile.RegistryHive = HKEY_CURRENT_USER
Check "RegistryHive", profile.RegistryHive, CLng(HKEY_CURRENT_USER)
profile.ProfilePath = "Software\TarnCom32 script test"
Check "ProfilePath", profile.ProfilePath, "Software\TarnCom32 script test\"
profile.ProfileName = "Profile"
Check "ProfileName", profile.ProfileName, "Profile"

Set entries = profile.ProfileEntries
Check "entries at first", entries.Count, CLng(0)
Check "ContainingProfile of the entries", entries.ContainingProfile Is profile, True
Set entry = entries.CreateNewItem
Check "CreateNewItem", entries.Count, CLng(1)
entry.Name = "Colour"
entry.Value = "green"
Check "Name", entry.Name, "Colour"
Check "Value", entry.Value, "green"
Check "ContainingProfile of the entry", entry.ContainingProfile Is profile, True
entry.SaveSetting
Check "SaveSetting", shell.RegRead("HKCU\Software\TarnCom32 script test\Profile\Colour"), "green"
entry.Value = "red"
entry.RetrieveSetting
Check "RetrieveSetting", entry.Value, "green"

Set other = entries.CreateNewItem
other.Name = "Size"
other.Value = "9"
profile.SaveSettings
Check "SaveSettings", shell.RegRead("HKCU\Software\TarnCom32 script test\Profile\Size"), "9"
names = ""
For Each again In entries
    names = names & again.Name & " "
Next
Check "For Each", names, "Colour Size "
Check "Item by number", entries.Item(2).Name, "Size"

entries.ClearAllEntries
Check "ClearAllEntries", entries.Count, CLng(0)
profile.RetrieveSettings
Check "RetrieveSettings", entries.Count, CLng(2)
Set entry = entries.Item(1)
Check "DeleteSetting, which looks for a subkey", entry.DeleteSetting, False
Check "DeleteProfileEntry, which does too", profile.DeleteProfileEntry("Size"), False
Check "the value stays", shell.RegRead("HKCU\Software\TarnCom32 script test\Profile\Colour"), "green"
entries.RemoveItem entry
Check "RemoveItem", entries.Count, CLng(1)
On Error Resume Next
WScript.CreateObject "TarnCom32.UserProfileEntry"
Check "a class that cannot be created", Err.Number <> 0, True
Err.Clear
On Error GoTo 0

If failures = 0 Then WScript.Echo "all checks passed"
