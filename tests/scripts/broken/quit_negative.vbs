WScript.Quit -5
