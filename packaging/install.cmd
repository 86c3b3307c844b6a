@echo off
rem Installs KWOUtil.
rem   install.cmd              for the current user; needs no rights
rem   install.cmd /machine     for everybody on this computer; needs an administrator
rem   /quiet                   does not wait for a key at the end
rem The exit code is 0 if KWOUtil is installed, and 1 if not. A text on the screen says why.
setlocal EnableExtensions DisableDelayedExpansion
set "FROM=%~dp0"
set "SCOPE=user"
set "QUIET="
set "MADE="
set "PROBLEM="

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
echo Type install.cmd to install for yourself, or install.cmd /machine to install for everybody.
exit /b 1

:checked
if "%SCOPE%"=="user" set "FOLDER=%LOCALAPPDATA%\Programs\KWOUtil"
if "%SCOPE%"=="machine" set "FOLDER=%ProgramFiles%\KWOUtil"
rem A 32-bit command prompt on 64-bit Windows has the 32-bit folder in that variable.
if "%SCOPE%"=="machine" if defined ProgramW6432 set "FOLDER=%ProgramW6432%\KWOUtil"

if not exist "%FROM%x64\KWOUtil.dll" goto incomplete
if not exist "%FROM%x86\KWOUtil.dll" goto incomplete

rem The installers (.msi) use the same folder, and bring no uninstall.cmd.
if exist "%FOLDER%\uninstall.cmd" goto free
if exist "%FOLDER%\x64\KWOUtil.dll" goto byinstaller
if exist "%FOLDER%\x86\KWOUtil.dll" goto byinstaller
:free

rem Which bitnesses this Windows runs, and the program that registers each.
set "REGISTER64="
set "REGISTER32="
if /i "%PROCESSOR_ARCHITECTURE%"=="AMD64" set "REGISTER64=%SystemRoot%\System32\regsvr32.exe"
if /i "%PROCESSOR_ARCHITEW6432%"=="AMD64" set "REGISTER64=%SystemRoot%\Sysnative\regsvr32.exe"
if exist "%SystemRoot%\SysWOW64\regsvr32.exe" set "REGISTER32=%SystemRoot%\SysWOW64\regsvr32.exe"
if not defined REGISTER32 if not defined REGISTER64 set "REGISTER32=%SystemRoot%\System32\regsvr32.exe"

if not exist "%FOLDER%\" set "MADE=yes"
if not exist "%FOLDER%\x64\" mkdir "%FOLDER%\x64" 2>nul
if not exist "%FOLDER%\x64\" goto nofolder
if not exist "%FOLDER%\x86\" mkdir "%FOLDER%\x86" 2>nul
if not exist "%FOLDER%\x86\" goto nofolder
if not exist "%FOLDER%\licenses\" mkdir "%FOLDER%\licenses" 2>nul
if not exist "%FOLDER%\licenses\" goto nofolder

rem uninstall.cmd comes first: it shows that the folder is install.cmd's.
call :copy uninstall.cmd uninstall.cmd
if defined PROBLEM goto nocopy
call :copy installed.txt README.txt
call :copy LICENSE.txt LICENSE.txt
for %%f in (gcc.txt GPL-3.txt mingw-w64.txt) do call :copy licenses\%%f licenses\%%f
for %%b in (x64 x86) do call :keep %%b
for %%b in (x64 x86) do (
    for %%f in (KWOUtil.dll KWOInit.dll KWOInit.nls KWOUtil.X.manifest KWOInit.X.manifest kwohost.exe kwocheck.exe) do (
        call :copy %%b\%%f %%b\%%f
    )
)
if defined PROBLEM goto nocopy

if defined REGISTER64 call :register "%REGISTER64%" x64 KWOUtil.dll
if defined PROBLEM goto noregister
if defined REGISTER64 call :register "%REGISTER64%" x64 KWOInit.dll
if defined PROBLEM goto noregister
if defined REGISTER32 call :register "%REGISTER32%" x86 KWOUtil.dll
if defined PROBLEM goto noregister
if defined REGISTER32 call :register "%REGISTER32%" x86 KWOInit.dll
if defined PROBLEM goto noregister

if "%SCOPE%"=="user" echo KWOUtil is installed for you, in "%FOLDER%"
if "%SCOPE%"=="machine" echo KWOUtil is installed for everybody on this computer, in "%FOLDER%"
if not defined REGISTER64 echo Only 32-bit programs can use it, because this is not a 64-bit Windows for Intel or AMD processors.
if not defined REGISTER32 echo Only 64-bit programs can use it, because this Windows runs no 32-bit programs.
echo To remove it, start uninstall.cmd in that folder.
call :wait
exit /b 0

rem :copy FILE TARGET. In the loops themselves, Windows would take parts of a path like C:\100%b for their variables.
:copy
copy /y "%FROM%%~1" "%FOLDER%\%~2" >nul 2>nul
if errorlevel 1 set "PROBLEM=%FOLDER%\%~2"
exit /b 0

rem :keep BITNESS: the message file that is there, if it is another one. Somebody may have translated it.
:keep
set "NLS=%FOLDER%\%~1\KWOInit.nls"
if not exist "%NLS%" exit /b 0
rem Their sizes first: not every system has an fc that compares.
set "SIZE="
for %%f in ("%NLS%") do set "SIZE=%%~zf"
for %%f in ("%FROM%%~1\KWOInit.nls") do if not "%%~zf"=="%SIZE%" goto another
"%SystemRoot%\System32\fc.exe" /b "%FROM%%~1\KWOInit.nls" "%NLS%" >nul 2>nul
if not errorlevel 1 exit /b 0
:another
set "KEPT=%NLS%.old"
set "NUMBER=1"
:nextname
if not exist "%KEPT%" goto keepit
set /a NUMBER+=1 >nul
set "KEPT=%NLS%.old%NUMBER%"
goto nextname
:keepit
copy /y "%NLS%" "%KEPT%" >nul 2>nul
if errorlevel 1 set "PROBLEM=%KEPT%"
echo There was another message file. It is kept in
echo     "%KEPT%"
exit /b 0

rem :register PROGRAM BITNESS FILE
:register
set "SWITCHES=/s /n /i:user"
if "%SCOPE%"=="machine" set "SWITCHES=/s"
"%~1" %SWITCHES% "%FOLDER%\%~2\%~3"
set "CODE=%ERRORLEVEL%"
if not "%CODE%"=="0" set "PROBLEM=%FOLDER%\%~2\%~3"
exit /b 0

:incomplete
echo KWOUtil was not installed: there are files missing beside install.cmd.
echo What to do: unpack the whole ZIP file into a folder, and start install.cmd there.
goto failed

:byinstaller
echo KWOUtil was not installed: an installer (.msi) has installed it already in
echo     "%FOLDER%"
echo What to do: remove it in the settings of Windows, under Apps, and start install.cmd again.
echo If it is not listed there, delete that folder first.
goto failed

:nofolder
echo KWOUtil was not installed: Windows does not let you create the folder
echo     "%FOLDER%"
if "%SCOPE%"=="user" echo What to do: check that your disk is not full, and that you may write to this folder.
if "%SCOPE%"=="machine" call :explainrights
if defined MADE rd "%FOLDER%\licenses" "%FOLDER%\x86" "%FOLDER%\x64" "%FOLDER%" 2>nul
goto failed

:nocopy
echo KWOUtil was not installed completely: this file could not be written:
echo     "%PROBLEM%"
echo What to do: close all programs that use KWOUtil, and start install.cmd again.
if "%SCOPE%"=="machine" echo If that does not help, open the command prompt with "Run as administrator" first.
if defined MADE call :undo
goto failed

:noregister
echo KWOUtil was not installed: Windows could not register this file:
echo     "%PROBLEM%"
if "%CODE%"=="3" echo Windows could not load it: it is damaged, a virus scanner holds it back, or a rule of this computer forbids it.
if "%CODE%"=="3" echo What to do: unpack the ZIP file again, and start install.cmd again.
if "%CODE%"=="4" echo The file is damaged.
if "%CODE%"=="4" echo What to do: unpack the ZIP file again, and start install.cmd again.
if "%CODE%"=="5" if "%SCOPE%"=="machine" echo Windows does not let you write to the registry of the whole computer.
if "%CODE%"=="5" if "%SCOPE%"=="machine" call :explainrights
if "%CODE%"=="5" if "%SCOPE%"=="user" echo Windows does not let you write to your part of the registry.
if "%CODE%"=="5" if "%SCOPE%"=="user" echo What to do: ask the administrator of this computer to allow it, or to install KWOUtil for everybody.
echo The program regsvr32.exe ended with exit code %CODE%.
if defined MADE call :undo
goto failed

:explainrights
echo What to do: open the command prompt with "Run as administrator", and type there
echo     "%FROM%install.cmd" /machine
echo Or start install.cmd without /machine, to install only for yourself.
exit /b 0

:undo
rem What cannot be loaded cannot be unregistered either.
del /f /q "%PROBLEM%" >nul 2>nul
set "KWO_UNDO=yes"
set "SWITCH="
if "%SCOPE%"=="machine" set "SWITCH=/machine"
rem The command call would change a path that contains percent signs.
pushd "%FROM%"
call .\uninstall.cmd %SWITCH% /quiet >nul 2>nul
popd
exit /b 0

:failed
call :wait
exit /b 1

:wait
if not defined QUIET pause
exit /b 0
