' Centres forms, puts them back where they were, and moves them onto the screen.
Option Explicit

Const Maximised = 2
Dim utility, parent, child
Set utility = CreateObject("KWOUtil.KWOUtility")

Sub Tell(what, form)
    WScript.Echo Left(what & Space(34), 34) & "left " & form.Left & ", top " & form.Top & ", width " & form.Width & _
        ", height " & form.Height & ", state " & form.WindowState
End Sub

Set parent = Host.CreateForm("frmParent")
parent.Caption = "Parent"
parent.Move 600, 600, 9000, 6000
parent.Show
utility.KWO_CenterForm parent
Tell "centred on the screen:", parent

Set child = Host.CreateForm("frmChild")
child.Caption = "Child"
child.Move 0, 0, 4500, 3000
child.Show
utility.KWO_CenterForm child, parent
Tell "centred over its parent:", child

' A position that was stored on a larger screen.
utility.KWO_SetFormPosition child, , 20000, 15000, 4500, 3000
Tell "pulled onto the screen:", child
utility.KWO_SetFormPosition child, , 0, 0, , , parent
Tell "the left edge inside its parent:", child
utility.KWO_SetFormPosition child, Maximised, 1500, 1500, 4500, 3000
Tell "placed, then maximised:", child
child.WindowState = 0
Tell "and normal again:", child

Dim mdi, document
Set mdi = Host.CreateMDIForm("mdiMain")
mdi.Caption = "Documents"
mdi.Move 1500, 1000, 9000, 7000
mdi.Show
Set document = Host.CreateForm("frmDocument", mdi)
document.Caption = "Document"
document.Move 0, 0, 4000, 3000
document.Show
utility.KWO_CenterForm document, mdi
Tell "in the middle of its MDI parent:", document
If WScript.Arguments.Count > 0 Then Host.SavePicture Screen, WScript.Arguments(0)
WScript.Sleep 1000
