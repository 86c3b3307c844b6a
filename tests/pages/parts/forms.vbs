' Shows a form and waits until it is in front and has drawn itself.
Sub ShowInFront(shown)
    Dim turns
    shown.Show
    For turns = 1 To 400
        If Not Screen.ActiveForm Is Nothing Then
            If Screen.ActiveForm.Name = shown.Name Then Exit For
        End If
        WScript.Sleep 20
    Next
    Host.DoEvents
End Sub
' Waits until a control of a form has the focus.
Function FocusComesTo(owner, name)
    Dim turns
    For turns = 1 To 400
        If Not owner.ActiveControl Is Nothing Then
            FocusComesTo = (owner.ActiveControl.Name = name)
            If FocusComesTo Then Exit Function
        End If
        WScript.Sleep 20
    Next
End Function
