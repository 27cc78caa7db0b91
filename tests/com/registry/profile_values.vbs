' Saves a profile whose values reg.exe reads afterwards.
Option Explicit

Const HKEY_CURRENT_USER = &H80000001
Dim profile, entries, saved

Sub Add(name, value)
    Dim entry
    Set entry = entries.CreateNewItem
    entry.Name = name
    entry.Value = value
End Sub

Set profile = WScript.CreateObject("TarnCom32.UserProfile")
Set entries = profile.ProfileEntries
profile.RegistryHive = HKEY_CURRENT_USER
profile.ProfilePath = "Software\TarnCom32 query test"
profile.ProfileName = "Default"
Add "Width", "12"
Add "Empty", ""
Add "Folder", "C:\Program Files\Vendor"
Add "Share", "\\server\share"
Add "With blanks", " in front and behind "
Add "Number", 12.5
Add "Colour", "red"
saved = profile.SaveSettings

' What a second profile with the same place makes of it.
Dim again
Set again = WScript.CreateObject("TarnCom32.UserProfile")
again.ProfilePath = "Software\TarnCom32 query test"
again.ProfileName = "Default"
saved = saved And again.RetrieveSettings
Set entries = again.ProfileEntries
entries.Item("colour").Value = "green"
saved = saved And entries.Item("Colour").SaveSetting
Add "Added later", "by a new entry"
saved = saved And entries.Item("Added later").SaveSetting
Add "Read only", "never saved"
saved = saved And entries.Item("Read only").RetrieveSetting
entries.Item("Width").DeleteSetting

If saved And entries.Count = 9 Then WScript.Echo "all checks passed"
