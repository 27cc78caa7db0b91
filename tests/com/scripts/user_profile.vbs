' Every member of UserProfile, its entries and an entry, called by a script; Windows' own tool reads what they saved.
Const HKEY_CURRENT_USER = &H80000001, key = "HKCU\Software\TarnCom32 script test"
Dim profile, entries, entry, names, saved
Reg "delete """ & key & """ /f"
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
Check "ContainingProfile of the entries", entries.ContainingProfile Is profile, True

Function Added(name, value)
    Set Added = entries.CreateNewItem
    Added.Name = name
    Added.Value = value
End Function
Set entry = Added("Colour", "green")
Check "Name", entry.Name, "Colour"
Check "Value", entry.Value, "green"
Check "ContainingProfile of the entry", entry.ContainingProfile Is profile, True
entry.SaveSetting
entry.Value = "red"
entry.RetrieveSetting
Check "SaveSetting and RetrieveSetting", entry.Value, "green"
Added "Empty", ""
Added "Folder", "C:\Program Files\Vendor"
Added "Share", "\\server\share"
Added "With blanks", " in front and behind "
Added "Number", 12.5
profile.SaveSettings
Added("Read only", "never saved").RetrieveSetting
Check "DeleteSetting, which looks for a subkey", entry.DeleteSetting, False
Check "DeleteProfileEntry, which does too", profile.DeleteProfileEntry("Folder"), False
saved = Reg("query """ & key & """ /s")
For Each entry In entries
    If entry.Name = "Read only" Then entry.Value = ""
    Check entry.Name & " in" & saved, InStr(saved, vbLf & "    " & entry.Name & "    REG_SZ    " & entry.Value & vbCr) > 0, True
Next
Check "a key and seven values in" & saved, UBound(Split(saved, "REG_SZ")), CLng(7)

names = entries.Count
entries.ClearAllEntries
Check "ClearAllEntries", entries.Count, CLng(0)
profile.RetrieveSettings
Check "RetrieveSettings", entries.Count, names
Check "Item by name", entries.Item("folder").Value, "C:\Program Files\Vendor"
entries.RemoveItem entries.Item(1)
Check "RemoveItem", entries.Count, names - 1

On Error Resume Next
WScript.CreateObject "TarnCom32.UserProfileEntry"
Check "a class that cannot be created", Err.Number <> 0, True
Err.Clear
profile.ProfilePath = "" ' names no key
profile.SaveSettings
Check "the source of an error that names none", Err.Source, ""
CheckError "a key that cannot be created", 1002, "Cannot create key"
profile.StorageMethod = 1
profile.SaveSettings
Check "the source of another error", Err.Source, "TarnCom32"
