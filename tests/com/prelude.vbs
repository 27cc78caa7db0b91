Option Explicit

' A check that itself fails, where errors are passed over, counts as a failure too.
Dim failures : failures = 0
Sub Check(what, actual, expected)
    failures = failures + 1
    If VarType(actual) = VarType(expected) Then
        If actual = expected Then
            failures = failures - 1
            Exit Sub
        End If
    End If
    WScript.Echo what & " gave " & actual & " (" & TypeName(actual) & "), not " & expected
End Sub

' The error that was raised, which ends with this; any text will do where none is given.
Sub CheckError(what, number, description)
    Check what, Err.Number, CLng(number)
    If description <> "" Then Check "the text of " & what, Err.Description, description
    Err.Clear
End Sub

' Values of one type, each by one more than the one before it: no two share a place.
Sub CheckRow(what, values, first)
    Dim i
    For i = 0 To UBound(values)
        Check what & " " & i, values(i), first
        If VarType(first) = vbString Then first = Chr(Asc(first) + 1) Else first = first + CInt(1)
    Next
End Sub

' What was reported since the last time: the text of the message boxes.
Dim files : Set files = WScript.CreateObject("Scripting.FileSystemObject")
Function Reports()
    Reports = ContentsOf(WScript.Arguments(0))
End Function

Function Report(member, number, description)
    Report = "[TarnCom32] Problem in " & member & vbCrLf & "Error Number: " & number & vbCrLf & _
        "Error Description: " & description & vbCrLf
End Function

' What the registry tool of Windows prints.
Dim shell : Set shell = WScript.CreateObject("WScript.Shell")
Function Reg(arguments)
    Dim output
    output = WScript.Arguments(0) & ".reg"
    shell.Run "cmd /c reg " & arguments & " > " & output & " 2>&1", 0, True
    Reg = ContentsOf(output)
End Function

' The text of a file, which goes with this; "" where there is none.
Function ContentsOf(path)
    Dim file
    ContentsOf = ""
    If Not files.FileExists(path) Then Exit Function
    Set file = files.OpenTextFile(path)
    If Not file.AtEndOfStream Then ContentsOf = file.ReadAll
    file.Close
    files.DeleteFile path
End Function
