' The numbered texts of KWOInit.nls, as KWOUtil asks for them, in a few languages.
'   messages.vbs [LANGUAGE]     one language only, by its identifier in hexadecimal, such as 040C
Option Explicit

Const English = &H0409, German = &H0407, French = &H040C, Spanish = &H0C0A

Dim companion, languages, language, first, last, size, texts, index

' The user's language identifier, as the system stores it.
Function UsersLanguage
    Const CurrentUser = &H80000001
    Dim registry, text
    Set registry = CreateObject("KWOUtil.KWORegistry")
    registry.KWO_RegGetValue CurrentUser, "Control Panel\International", "Locale", text
    UsersLanguage = CLng("&H" & Right(text, 4))
End Function

' If the file is not beside the program, the companion uses the one beside itself.
Set companion = CreateObject("KWOInit.KWOInitialize")
If Not companion.KWO_MsgTableSize("KWOUtil", "KWOInit.nls", first, last, size) Then
    WScript.Echo "There is no message file."
    WScript.Quit 1
End If
WScript.Echo "Messages " & first & " to " & last & ", " & size & " characters in all languages"

If WScript.Arguments.Count > 0 Then
    languages = Array(CLng("&H" & WScript.Arguments(0)))
Else
    languages = Array(UsersLanguage, English, German, French, Spanish)
End If

For Each language In languages
    ' A script's array begins at 0, so the element's index is the number of its message.
    ReDim texts(last)
    ReDim index(0)
    companion.KWO_MsgTableLoad language, index, texts
    WScript.Echo
    WScript.Echo "Language " & Right("000" & Hex(language), 4)
    WScript.Echo "  1899  " & Replace(texts(1899), "%1", "DEMO")
    WScript.Echo "  1900  " & texts(1900)
    WScript.Echo "  1929  " & texts(1929)
Next
