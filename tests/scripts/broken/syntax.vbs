Dim x
x = (
