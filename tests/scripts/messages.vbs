' The message table as a script gets it from the companion.
Option Explicit

Dim checks
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Dim companion, found, first, last, size, texts, index
Set companion = CreateObject("KWOInit.KWOInitialize")
found = companion.KWO_MsgTableSize("KWOUtil", "C:\no such folder\KWOInit.nls", first, last, size)
Check "the file beside the companion is found", found = True And first = 1899 And last = 1935 And size > 0

ReDim texts(1935)
ReDim index(0)
companion.KWO_MsgTableLoad &H0409, index, texts
Check "a script's array is filled", texts(1900) = "An internal application error has occurred."
Check "numbers without a text stay empty", texts(1903) = "" And texts(0) = ""
Check "the index has an element for each text", UBound(index) = 1935 And index(1900) = 1 And index(1903) = 0
Dim fixedTexts(1935), fixedIndex(3)
companion.KWO_MsgTableLoad &H0409, fixedIndex, fixedTexts
Check "arrays of a fixed size are filled", fixedTexts(1902) = "Invalid Hex Digit"
Check "and keep their size", UBound(fixedTexts) = 1935 And UBound(fixedIndex) = 3
companion.KWO_MsgTableLoad &H0C07, index, texts
Check "Austrian falls back to German", texts(1902) = "Ungültige Hexadezimalziffer"
companion.KWO_MsgTableLoad &H0411, index, texts
Check "Japanese falls back to English", texts(1902) = "Invalid Hex Digit"

found = companion.KWO_MsgTableSize("Anybody", "KWOInit.nls", first, last, size)
Check "a program without a section is served the component's", found = True And last = 1935

On Error Resume Next
companion.KWO_MsgTableLoad &H0409, index, "text"
Check "a text is no array", Err.Number = 13
Err.Clear
ReDim texts(2, 2)
companion.KWO_MsgTableLoad &H0409, index, texts
Check "an array of two dimensions is refused", Err.Number <> 0
Err.Clear
texts = Array("a", Nothing)
companion.KWO_MsgTableLoad &H0409, index, texts
Check "elements that are no texts are refused", Err.Number <> 0

WScript.Echo "done " & checks
