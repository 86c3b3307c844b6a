' Finds what the VBScript of this system lacks, and prints a list: an empty one on Windows. docs/script-engines.md has the
' same list, with what to write instead; the checks compare the two.
Option Explicit

Dim checks, subject, holds, found, page, files, shell, folder, shown
checks = 0
found = "|"
subject = ""
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub
Set files = CreateObject("Scripting.FileSystemObject")
Set shell = CreateObject("WScript.Shell")
folder = files.GetParentFolderName(WScript.ScriptFullName)
page = files.OpenTextFile(folder & "\..\..\docs\script-engines.md").ReadAll
page = Mid(page, InStr(page, "## VBScript"), InStr(page, "## JScript") - InStr(page, "## VBScript"))

Sub Lacks(name)
    WScript.Echo "lacks: " & name
    found = found & name & "|"
    shown = "the page tells of: " & name
    Check shown, InStr(page, "| " & name & " |") > 0
End Sub

' What an engine can compile and run without harm: a line each. A function that it lacks is an error, which skips the
' statement and so leaves `holds` False.
Sub About(name)
    If subject <> "" And Not holds Then Lacks subject
    subject = name
    holds = False
    Err.Clear
End Sub

Dim when, number, text, items(2), copies, thing, other
when = DateSerial(2026, 11, 21) + TimeSerial(14, 5, 9)
Class Named
    Public Name
    Public Default Function Greeting(other)
        Greeting = Name & other
    End Function
End Class
Sub RaiseOwn
    Err.Raise 77, "source", "text"
End Sub

On Error Resume Next
About "`Abs`, `Sgn`, `Int`, `Fix`, `Sqr`" : holds = Abs(-2) = 2 And Sgn(-3) = -1 And Int(-1.5) = -2 And Fix(-1.5) = -1 And Sqr(4) = 2
About "`Exp`, `Log`, `Sin`, `Cos`, `Tan`, `Atn`" : holds = Exp(0) = 1 And Log(1) = 0 And Sin(0) = 0 And Cos(0) = 1 And Tan(0) = 0 And Atn(0) = 0
About "`Array`" : copies = Array(1, 2) : holds = copies(1) = 2 And UBound(copies) = 1 And LBound(copies) = 0
About "`Asc`, `Chr`" : holds = Asc("A") = 65 And Chr(65) = "A"
About "`AscB`" : holds = AscB("A") = 65
About "`AscW`" : holds = AscW("A") = 65
About "`CBool`, `CByte`, `CCur`, `CDbl`, `CInt`, `CLng`, `CSng`, `CStr`" : holds = CBool("True") And CByte("7") = 7 And CCur("7") = 7 And CDbl("2") = 2 And CInt("2") = 2 And CLng("70000") = 70000 And CSng("2") = 2 And CStr(2) = "2"
About "`CDate`" : holds = CDate("2026-11-21") = DateSerial(2026, 11, 21) And CDate(1) = DateSerial(1899, 12, 31)
About "`ChrB`" : text = ChrB(65) : holds = Err.Number = 0
About "`ChrW`" : holds = ChrW(65) = "A"
About "`Date`, `Time`, `Now`, `Timer`" : holds = (Date = Int(Now) Or Date = Int(Now)) And Time < 1 And Timer >= 0
About "`DateAdd` of months" : holds = DateAdd("m", 1, DateSerial(2026, 1, 31)) = DateSerial(2026, 2, 28)
About "`DateAdd` of days, hours, seconds" : holds = DateAdd("d", 1, DateSerial(2026, 11, 21)) = DateSerial(2026, 11, 22) And DateAdd("h", 24, DateSerial(2026, 11, 21)) = DateSerial(2026, 11, 22)
About "`DateDiff`" : holds = DateDiff("d", DateSerial(2026, 11, 21), DateSerial(2026, 11, 23)) = 2
About "`DatePart`" : holds = DatePart("m", when) = 11
About "`DateSerial` beyond the month" : holds = DateSerial(2026, 1, 32) = DateSerial(2026, 2, 1)
About "`DateValue`" : holds = DateValue("2026-11-21") = DateSerial(2026, 11, 21)
About "`Year`, `Month`, `Day`, `Hour`, `Minute`, `Second`" : holds = Year(when) = 2026 And Month(when) = 11 And Day(when) = 21 And Hour(when) = 14 And Minute(when) = 5 And Second(when) = 9
About "`Weekday`, `WeekdayName`, `MonthName`" : holds = Weekday(when) = vbSaturday And Len(WeekdayName(1)) > 0 And Len(MonthName(11)) > 0
About "`TimeSerial`" : holds = TimeSerial(12, 0, 0) = 0.5
About "`TimeValue`" : holds = TimeValue("12:00:00") = 0.5
About "`IsDate` of a text" : holds = IsDate("2026-11-21")
About "`IsDate` of a date" : holds = IsDate(when)
About "`FormatDateTime`" : holds = Len(FormatDateTime(when)) > 0 And FormatDateTime(when, vbShortTime) = "14:05"
About "`FormatNumber`, `FormatCurrency`, `FormatPercent`" : holds = InStr(FormatNumber(1.5, 1), "5") > 0 And Len(FormatCurrency(1)) > 0 And InStr(FormatPercent(0.5), "50") > 0
About "a date joined to a text" : holds = Len("on " & when) > 5 And Len(CStr(when)) > 5
About "sums and differences of dates" : number = (when + 2) - when : holds = number = 2
About "comparisons of dates" : holds = when < DateSerial(2030, 1, 1)
About "literal dates" : holds = #11/21/2026# = DateSerial(2026, 11, 21)
About "`Escape`, `Unescape`" : holds = Escape("a b") = "a%20b" And Unescape("a%20b") = "a b"
About "`Eval`" : holds = Eval("1 + 1") = 2
About "`Execute`" : Execute "number = 5" : holds = Err.Number = 0 And number = 5
About "`ExecuteGlobal`" : ExecuteGlobal "number = 6" : holds = Err.Number = 0 And number = 6
About "`Filter`" : copies = Filter(Array("ab", "cd"), "a") : holds = UBound(copies) = 0
About "`GetLocale`" : number = GetLocale : holds = Err.Number = 0 And number > 0
About "`SetLocale`" : SetLocale 1033 : holds = Err.Number = 0
About "`GetObject`" : Set thing = GetObject("", "Scripting.Dictionary") : holds = Err.Number = 0
About "`GetRef`" : Set thing = GetRef("RaiseOwn") : holds = Err.Number = 0
About "`Hex`, `Oct`, `RGB`" : holds = Hex(255) = "FF" And Oct(8) = "10" And RGB(1, 2, 3) = 197121
About "`InStr`, `InStrRev`" : holds = InStr("abc", "c") = 3 And InStr(1, "abC", "c", vbTextCompare) = 3 And InStrRev("abcabc", "b") = 5
About "`InStrB`" : holds = InStrB("abc", "b") = 3
About "`IsArray`, `IsEmpty`, `IsNull`, `IsNumeric`, `IsObject`" : holds = IsArray(items) And IsEmpty(Empty) And IsNull(Null) And IsNumeric("1.5") And IsObject(Err)
About "`Join`" : holds = Join(Array("a", "b"), "-") = "a-b"
About "`Split`" : copies = Split("a,b", ",") : holds = UBound(copies) = 1 And copies(1) = "b"
About "`LCase`, `UCase`, `Left`, `Right`, `Mid`, `Len`" : holds = LCase("AB") = "ab" And UCase("ab") = "AB" And Left("abc", 2) = "ab" And Right("abc", 2) = "bc" And Mid("abc", 2, 1) = "b" And Len("abc") = 3
About "`LeftB`, `RightB`, `MidB`" : text = LeftB("abc", 2) & RightB("abc", 2) & MidB("abc", 3, 2) : holds = Err.Number = 0 And text = "acb"
About "`LenB`" : holds = LenB("abc") = 6
About "`Trim`, `LTrim`, `RTrim`, `Space`, `String`, `StrReverse`" : holds = Trim(" a ") = "a" And LTrim(" a") = "a" And RTrim("a ") = "a" And Space(2) = "  " And String(3, "x") = "xxx" And StrReverse("abc") = "cba"
About "`Randomize`, `Rnd`" : Randomize 5 : number = Rnd : holds = Err.Number = 0 And number >= 0
About "`Replace`, `StrComp`" : holds = Replace("abc", "b", "x") = "axc" And StrComp("a", "A", vbTextCompare) = 0
About "`Round`" : holds = Round(2.6) = 3
About "`Round` to the even number" : holds = Round(2.5) = 2
About "`Round` to decimal places" : holds = Round(2.345, 1) = 2.3
About "`ScriptEngine`" : holds = ScriptEngine = "VBScript" And ScriptEngineMajorVersion >= 5
About "`TypeName`, `VarType`" : holds = TypeName("a") = "String" And TypeName(when) = "Date" And VarType("a") = vbString
About "`\`, `Mod`, `^`" : holds = 7 \ 2 = 3 And 7 Mod 4 = 3 And 2 ^ 3 = 8
About "`And`, `Or` of numbers" : number = 6 And 3 : holds = number = 2 : number = 6 Or 1 : holds = holds And number = 7
About "`Xor`" : number = 5 Xor 1 : holds = Err.Number = 0 And number = 4
About "`Not` of a number" : number = Not 1 : holds = Err.Number = 0 And number = -2
About "`Eqv`, `Imp`" : holds = True Eqv True : holds = holds And (False Imp True)
About "`Erase`" : items(1) = 3 : Erase items : holds = Err.Number = 0 And IsEmpty(items(1))
About "copies of arrays" : copies = items : copies(0) = 1 : holds = IsEmpty(items(0))
About "arrays in arrays" : copies = Array(Array(1, 2), 3) : number = copies(0)(1) : holds = Err.Number = 0 And number = 2
About "default members of classes" : Set thing = New Named : thing.Name = "a" : holds = thing("b") = "ab"
About "`Err.Raise`" : RaiseOwn : holds = Err.Number = 77 And Err.Source = "source" And Err.Description = "text"
About "`Err.Number` of a division by zero" : number = 1 / 0 : holds = Err.Number = 11
About "`Err.Number` of an overflow" : number = CInt(70000) : holds = Err.Number = 6
About "`Err.Number` of a wrong type" : number = CLng("x") : holds = Err.Number = 13
About "`Err.Number` of a wrong index" : number = items(5) : holds = Err.Number = 9
About "`Err.Number` of the null object" : Set thing = Nothing : number = thing.Name : holds = Err.Number = 91
About "`Err.Number` of a member of an empty variable" : thing = Empty : number = thing.Name : holds = Err.Number = 424
About "`Err.Number` of an unknown member" : number = Err.Unknown : holds = Err.Number = 438
About "`Err.Number` of an unknown class" : Set thing = CreateObject("No.Such") : holds = Err.Number = 429
About "`Err.Number` of an undeclared variable" : number = undeclared : holds = Err.Number = 500
About "`RegExp`" : Set thing = New RegExp : thing.Pattern = "b+" : holds = thing.Test("abb") And thing.Replace("abb", "x") = "ax" And thing.Execute("abb")(0).Value = "bb"
About "`Scripting.Dictionary`" : Set thing = CreateObject("Scripting.Dictionary") : thing.Add "a", 1 : thing("b") = 2 : text = "" : For Each other In thing : text = text & other : Next : holds = text = "ab" And thing("b") = 2 And UBound(thing.Keys) = 1
About "`Scripting.FileSystemObject`" : text = files.OpenTextFile(WScript.ScriptFullName).ReadLine : holds = Left(text, 7) = "' Finds" And files.GetFile(WScript.ScriptFullName).Size > 100 And files.GetFile(WScript.ScriptFullName).DateLastModified > DateSerial(2000, 1, 1)
About "`Files` of a folder" : number = 0 : For Each other In files.GetFolder(folder).Files : number = number + 1 : Next : holds = number > 1
About "`WScript.Shell`" : holds = Len(shell.ExpandEnvironmentStrings("%PATH%")) > 6 And shell.Run("cmd /c exit 5", 0, True) = 5
About ""

' What may end the engine or is no text for it: a program each, which quits with 0 when it holds.
Dim file, stream
file = files.BuildPath(files.GetSpecialFolder(2), files.GetTempName & ".vbs")
Sub AboutProgram(name, lines)
    Set stream = files.CreateTextFile(file, True)
    stream.Write Replace(lines, "|", vbCrLf)
    stream.Close
    If shell.Run("""" & WScript.FullName & """ """ & file & """", 0, True) <> 7 Then Lacks name
End Sub
AboutProgram "a program at all", "WScript.Quit 7"
AboutProgram "`ReDim` of an array declared as `Dim a()`", "Dim a()|ReDim a(3)|a(3) = 1|If a(3) = 1 Then WScript.Quit 7"
AboutProgram "`ReDim` of another array", "Dim a|ReDim a(3)|a(3) = 1|If UBound(a) = 3 Then WScript.Quit 7"
AboutProgram "`ReDim Preserve`", "ReDim a(1)|a(1) = 5|ReDim Preserve a(3)|If a(1) = 5 And UBound(a) = 3 Then WScript.Quit 7"
AboutProgram "an argument that begins with a parenthesis, as in `Show (1 + 2) * 3`", "Sub Show(n)|If n = 9 Then WScript.Quit 7|End Sub|Show (1 + 2) * 3"
AboutProgram "an index after a call, as in `Split(a, "","")(1)`", "If Split(""a,b"", "","")(1) = ""b"" Then WScript.Quit 7"
AboutProgram "names in brackets, as in `[my name]`", "Dim [my name]|[my name] = 7|WScript.Quit [my name]"
AboutProgram "`With`", "Set d = CreateObject(""Scripting.Dictionary"")|With d|.Add 1, 7|WScript.Quit .Item(1)|End With"
AboutProgram "`Select Case` with lists", "Select Case 3|Case 1, 2|Case 3, 4: WScript.Quit 7|Case Else|End Select"
AboutProgram "`Do`, `While`, `For` with steps", "For i = 3 To 1 Step -1|n = n + i|Next|Do While n < 7|n = n + 1|Loop|Do|n = n + 1|Exit Do|Loop Until False|While n < 7|n = 7|Wend|If n = 8 Then WScript.Quit 7"
AboutProgram "properties with arguments", "Class C|Private v|Public Property Let P(i, x)|v = i + x|End Property|Public Property Get P(i)|P = v + i|End Property|End Class|Set o = New C|o.P(1) = 2|If o.P(4) = 7 Then WScript.Quit o.P(4)"
AboutProgram "`Class_Initialize`, `Class_Terminate`", "Class C|Private Sub Class_Initialize|n = 5|End Sub|Private Sub Class_Terminate|WScript.Quit n + 2|End Sub|End Class|Dim n|Set o = New C|Set o = Nothing"
AboutProgram "`ByVal`, `ByRef`", "Sub S(ByVal a, ByRef b)|a = 1|b = 7|End Sub|Dim x, y|S x, y|If IsEmpty(x) Then WScript.Quit y"
AboutProgram "arrays with two dimensions", "Dim g(2, 3)|g(1, 2) = 7|If UBound(g, 2) = 3 Then WScript.Quit g(1, 2)"
AboutProgram "`On Error GoTo 0`", "Sub S|On Error Resume Next|x = CLng(""x"")|On Error GoTo 0|WScript.Quit 7|End Sub|S"
AboutProgram "continued lines, `Rem`, hexadecimal numbers", "x = _|  &H5 _|  + 2|Rem a comment|WScript.Quit x"
AboutProgram "`Const` and names of constants", "Const N = 7|If vbCrLf = Chr(13) & Chr(10) And vbYesNo = 4 Then WScript.Quit N"
AboutProgram "`If` with several branches in one line", "If 1 = 2 Then x = 1 Else x = 7|If x = 7 Then WScript.Quit x"
files.DeleteFile file
On Error GoTo 0

' A row of the page that this system does not lack any more: only where something is lacking at all.
Dim rows, row, mark
If found <> "|" Then
    row = 1
    Do
        mark = InStr(row, page, vbLf & "| ")
        If mark = 0 Then Exit Do
        row = mark + 3
        text = Mid(page, row, InStr(row, page, " |") - row)
        If text <> "lacking" Then Check "still lacking: " & text, InStr(found, "|" & text & "|") > 0
    Loop
End If
Check "the list is made", True
WScript.Echo "done " & checks
