' Every member of StringFunctions, called by a script.
Dim s, a, text, c, item, joined
Set s = WScript.CreateObject("TarnCom32.StringFunctions")

Check "RemoveStringFromCommaDelimitedList", s.RemoveStringFromCommaDelimitedList("b", "a,b,c"), "a,,c"
Check "NumberOfSubStringsInSourceString", s.NumberOfSubStringsInSourceString("a,b,c", ","), CLng(2)
Check "NumberOfElementsInDelimitedString", s.NumberOfElementsInDelimitedString("a,b,c", ","), CLng(3)
s.SplitStringAtDelimiters "a,b,c", ",", a, -1
Check "SplitStringAtDelimiters", a(0) & "|" & a(1) & "|" & a(2) & "|" & UBound(a), "a|b|c|2"
Check "IsBlank", s.IsBlank(Empty), True
Check "ReturnStringBeforeDelimiter", s.ReturnStringBeforeDelimiter("a,b", ","), "a"
Check "RemoveIDFromListWithDelimiter", s.RemoveIDFromListWithDelimiter("1;2;3;2", 2, ";"), "1;3;"
Check "ReturnStringAfterDelimiter", s.ReturnStringAfterDelimiter("a,b", ","), "b"
Check "CleanDate", s.CleanDate(" 1\2_3 "), "123"
Check "StringReturnBetween", s.StringReturnBetween("a<b>c", "<", ">"), "b"
text = "bab"
Check "NumberOfExactMatchesRemovedFromString", s.NumberOfExactMatchesRemovedFromString(text, "b"), CInt(2)
Check "its source when there are matches", text, "bab"
Check "CheckForNameInList", s.CheckForNameInList("B", Array("a", "b"), True), True
Check "CheckForNameInList with a flag of 1", s.CheckForNameInList("B", Array("a", "b"), 1), False
Check "ReturnStringAfterLastDelimiter", s.ReturnStringAfterLastDelimiter("a,b,c", ","), "c"
Check "ReturnStringBeforeLastDelimiter", s.ReturnStringBeforeLastDelimiter("a,b,c", ","), "a,b"
Check "ReverseString", s.ReverseString("abc"), "cba"
Check "ReturnStringBeforeNthDelimiter", s.ReturnStringBeforeNthDelimiter("a,b,c", ",", 2), "a,b,"
Check "ReturnStringAfterNthDelimiter", s.ReturnStringAfterNthDelimiter("a,b,c", ",", 2), ",c"
Check "ReplaceValueInStream", s.ReplaceValueInStream("a,b,c", ",", "X", 1), "a,X,c"

Set c = s.CreateCollectionFromString("one!1;two!2")
Check "CreateCollectionFromString", c.Count, CLng(2)
Check "its default member", c("two"), "2"
Check "StringExistsInCollection", s.StringExistsInCollection("TWO", c), True
joined = ""
For Each item In c
    joined = joined & item & " "
Next
Check "For Each", joined, "1 2 "

' What goes out of a collection may come to it while it ends.
Class Ending
    Private Sub Class_Terminate
        c.Add "late", "late"
    End Sub
End Class
c.Add New Ending, "ending", 1
c.Remove 1
Check "what an item adds at its end", c.Count & c(1) & c("late"), "31late"

' An array of a fixed size stays as it is where a member says nothing of its failures.
Dim fixed(6)
fixed(0) = "kept"
s.SplitStringAtDelimiters "a,b", ",", fixed, -1
Check "an array of a fixed size", fixed(0) & UBound(fixed), "kept6"

On Error Resume Next
c.Add "3", "one"
Check "the source of an error", Err.Source, "TarnCom32"
CheckError "a key that comes twice", 457, "This key is already associated with an element of this collection"
text = s.ReplaceValueInStream("a", ",", "X", 5)
CheckError "a stream that ends too early", 5, ""
text = s.RemoveIDFromListWithDelimiter("x;", 2, ";")
CheckError "a list of no numbers", 13, ""
text = s.ReverseString("a", "b")
CheckError "too many arguments", 450, ""
s.NoSuchMember
CheckError "no such member", 438, ""
