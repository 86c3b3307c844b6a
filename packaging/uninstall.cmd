@echo off
rem Removes KWOUtil.
rem   uninstall.cmd              what install.cmd has installed for the current user
rem   uninstall.cmd /machine     what install.cmd /machine has installed; needs an administrator
rem   /quiet                     does not wait for a key at the end
rem It deletes the files that install.cmd has copied and nothing else. The exit code is 0 if KWOUtil is removed, and 1 if
rem not. A text on the screen says why.
setlocal EnableExtensions DisableDelayedExpansion
set "SCOPE=user"
set "QUIET="
set "PROBLEM="
set "HERE=%~dp0"

:arguments
if "%~1"=="" goto checked
if /i "%~1"=="/machine" (
    set "SCOPE=machine"
    shift
    goto arguments
)
if /i "%~1"=="/quiet" (
    set "QUIET=yes"
    shift
    goto arguments
)
echo Unknown switch: %1
echo Type uninstall.cmd to remove what you have installed for yourself, or uninstall.cmd /machine.
exit /b 1

:checked
set "MACHINEFOLDER=%ProgramFiles%\KWOUtil"
rem A 32-bit command prompt on 64-bit Windows has the 32-bit folder in that variable.
if defined ProgramW6432 set "MACHINEFOLDER=%ProgramW6432%\KWOUtil"
rem Started by a double click where it was installed for everybody, it removes that.
if /i "%HERE%"=="%MACHINEFOLDER%\" set "SCOPE=machine"
if "%SCOPE%"=="user" set "FOLDER=%LOCALAPPDATA%\Programs\KWOUtil"
if "%SCOPE%"=="machine" set "FOLDER=%MACHINEFOLDER%"
set "CLASSES=HKCU\Software\Classes"
if "%SCOPE%"=="machine" set "CLASSES=HKLM\Software\Classes"
if not exist "%FOLDER%\" goto nothing
rem The installers (.msi) use the same folder, and bring no uninstall.cmd.
if exist "%FOLDER%\uninstall.cmd" goto mine
if exist "%FOLDER%\x64\KWOUtil.dll" goto byinstaller
if exist "%FOLDER%\x86\KWOUtil.dll" goto byinstaller
:mine

set "REGISTER64="
set "REGISTER32="
if /i "%PROCESSOR_ARCHITECTURE%"=="AMD64" set "REGISTER64=%SystemRoot%\System32\regsvr32.exe"
if /i "%PROCESSOR_ARCHITEW6432%"=="AMD64" set "REGISTER64=%SystemRoot%\Sysnative\regsvr32.exe"
if exist "%SystemRoot%\SysWOW64\regsvr32.exe" set "REGISTER32=%SystemRoot%\SysWOW64\regsvr32.exe"
if not defined REGISTER32 if not defined REGISTER64 set "REGISTER32=%SystemRoot%\System32\regsvr32.exe"

rem install.cmd also calls this when it could not install everything.
if defined KWO_UNDO goto whole
if defined REGISTER64 call :look x64 KWOInit KWOInitialize
if defined REGISTER64 call :look x64 KWOUtil KWOTimer
if defined REGISTER32 call :look x86 KWOInit KWOInitialize
if defined REGISTER32 call :look x86 KWOUtil KWOTimer
if defined PROBLEM goto notwhole
:whole
if defined REGISTER64 call :unregister "%REGISTER64%" x64 KWOInit.dll
if defined REGISTER64 call :unregister "%REGISTER64%" x64 KWOUtil.dll
if defined REGISTER32 call :unregister "%REGISTER32%" x86 KWOInit.dll
if defined REGISTER32 call :unregister "%REGISTER32%" x86 KWOUtil.dll
if defined PROBLEM goto noregister

for %%b in (x64 x86) do (
    for %%f in (KWOUtil.dll KWOInit.dll KWOInit.nls KWOUtil.X.manifest KWOInit.X.manifest kwohost.exe kwocheck.exe) do (
        call :delete %%b\%%f
    )
)
if defined PROBLEM goto nodelete
for %%f in (README.txt LICENSE.txt licenses\gcc.txt licenses\GPL-3.txt licenses\mingw-w64.txt) do call :delete %%f
for %%d in (x64 x86 licenses) do call :deletefolder %%d
echo KWOUtil is removed.
rem This file goes last.
if /i "%HERE%"=="%FOLDER%\" goto myself
if exist "%FOLDER%\uninstall.cmd" del /f /q "%FOLDER%\uninstall.cmd" >nul 2>nul
rd "%FOLDER%" 2>nul
if exist "%FOLDER%\" echo The folder "%FOLDER%" stays, because it contains files that install.cmd has not copied.
call :wait
exit /b 0

rem It runs from that folder: another command deletes it when this one has ended. No path is in that command, because
rem another command prompt would read its characters in its own way.
:myself
call :wait
cd /d "%FOLDER%"
if /i not "%CD%"=="%FOLDER%" exit /b 0
start "" /b cmd /c "ping -n 3 127.0.0.1 >nul 2>nul & del /f /q uninstall.cmd & cd .. & rd KWOUtil 2>nul"
cd /d "%SystemRoot%"
exit /b 0

rem :delete FILE. In the loops themselves, Windows would take parts of a path like C:\100%b for their variables.
:delete
if exist "%FOLDER%\%~1" del /f /q "%FOLDER%\%~1" >nul 2>nul
if exist "%FOLDER%\%~1" set "PROBLEM=%FOLDER%\%~1"
exit /b 0

:deletefolder
rd "%FOLDER%\%~1" 2>nul
exit /b 0

rem :look BITNESS LIBRARY CLASS: whether a DLL has gone whose classes are still in the registry.
:look
if exist "%FOLDER%\%~1\%~2.dll" exit /b 0
reg query "%CLASSES%\%~2.%~3" >nul 2>nul
if not errorlevel 1 set "PROBLEM=%FOLDER%\%~1\%~2.dll"
exit /b 0

rem :unregister PROGRAM BITNESS FILE
:unregister
if not exist "%FOLDER%\%~2\%~3" exit /b 0
set "SWITCHES=/s /u /n /i:user"
if "%SCOPE%"=="machine" set "SWITCHES=/s /u"
"%~1" %SWITCHES% "%FOLDER%\%~2\%~3"
set "CODE=%ERRORLEVEL%"
if not "%CODE%"=="0" set "PROBLEM=%FOLDER%\%~2\%~3"
exit /b 0

:nothing
if "%SCOPE%"=="user" echo There is nothing to remove: KWOUtil is not installed for you in
if "%SCOPE%"=="machine" echo There is nothing to remove: KWOUtil is not installed for everybody in
echo     "%FOLDER%"
if "%SCOPE%"=="user" if exist "%MACHINEFOLDER%\" echo It is installed for everybody. To remove that, start uninstall.cmd /machine.
call :wait
exit /b 0

:byinstaller
echo KWOUtil was not removed: an installer (.msi) has installed it in
echo     "%FOLDER%"
echo What to do: remove it in the settings of Windows, under Apps. If it is not listed there, delete that folder.
call :wait
exit /b 1

:notwhole
echo KWOUtil was not removed: this file has gone, and without it Windows cannot clean the registry:
echo     "%PROBLEM%"
if "%SCOPE%"=="user" echo What to do: start install.cmd again, which repairs the files, and then uninstall.cmd.
if "%SCOPE%"=="machine" echo What to do: start install.cmd /machine again, which repairs the files, and then uninstall.cmd /machine.
call :wait
exit /b 1

:noregister
echo KWOUtil was not removed: Windows could not take this file out of the registry:
echo     "%PROBLEM%"
if "%SCOPE%"=="machine" echo What to do: open the command prompt with "Run as administrator", and start uninstall.cmd /machine there.
if "%SCOPE%"=="user" echo What to do: start install.cmd again, which repairs the files, and then uninstall.cmd.
echo The program regsvr32.exe ended with exit code %CODE%.
call :wait
exit /b 1

:nodelete
echo KWOUtil can no longer be used, but this file could not be deleted:
echo     "%PROBLEM%"
echo What to do: close all programs that use KWOUtil, and start uninstall.cmd again.
call :wait
exit /b 1

:wait
if not defined QUIET pause
exit /b 0
