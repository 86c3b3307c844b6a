@echo off
rem Runs the tests of KWOUtil on this computer and writes report.txt beside this file. Start it with a double click.
rem   run_tests.cmd [/quiet] [FILTER]
rem   /quiet     does not wait for a key at the end
rem   FILTER     runs only some tests, for example *Timer*
rem It registers the libraries of this folder while the tests run, for you alone or, if it runs as administrator, for
rem everybody. At the end nothing is registered. The exit code is 0 if all tests have passed, 1 if not, and 2 if they
rem could not run.
setlocal EnableExtensions DisableDelayedExpansion
set "HERE=%~dp0"
set "REPORT=%HERE%report.txt"
set "QUIET="
set "FILTER=*"
set "PASSED=0"
set "FAILED=0"

:arguments
if "%~1"=="" goto checked
if /i "%~1"=="/quiet" (
    set "QUIET=yes"
    shift
    goto arguments
)
set "FILTER=%~1"
shift
goto arguments

:checked
if not exist "%HERE%..\x64\KWOUtil.dll" goto incomplete
if not exist "%HERE%..\x86\KWOUtil.dll" goto incomplete

rem Which bitnesses this Windows runs, and the program that registers each.
set "REGISTER64="
set "REGISTER32="
if /i "%PROCESSOR_ARCHITECTURE%"=="AMD64" set "REGISTER64=%SystemRoot%\System32\regsvr32.exe"
if /i "%PROCESSOR_ARCHITEW6432%"=="AMD64" set "REGISTER64=%SystemRoot%\Sysnative\regsvr32.exe"
if exist "%SystemRoot%\SysWOW64\regsvr32.exe" set "REGISTER32=%SystemRoot%\SysWOW64\regsvr32.exe"
if not defined REGISTER32 if not defined REGISTER64 set "REGISTER32=%SystemRoot%\System32\regsvr32.exe"

rem A run that was interrupted has left these libraries in the registry.
if defined REGISTER64 call :leftover x64 64 "%REGISTER64%"
if defined REGISTER32 call :leftover x86 32 "%REGISTER32%"
reg query "HKCU\Software\Classes\KWOUtil.KWOTimer" >nul 2>nul
if not errorlevel 1 goto installed
reg query "HKLM\Software\Classes\KWOUtil.KWOTimer" >nul 2>nul
if not errorlevel 1 goto installed

rem An administrator's programs find only what is registered for everybody.
set "SCOPE=/n /i:user"
reg add "HKLM\Software\Classes\KWOUtil.Tests" /f >nul 2>nul
if not errorlevel 1 set "SCOPE="
reg delete "HKLM\Software\Classes\KWOUtil.Tests" /f >nul 2>nul

rem Whether a file can be written: a redirection does not tell in every command prompt, copying does.
copy /y "%HERE%run_tests.cmd" "%REPORT%" >nul 2>nul
if errorlevel 1 goto noreport
echo KWOUtil @VERSION@: report of the tests >"%REPORT%"
echo %DATE% %TIME% >>"%REPORT%"
echo filter: %FILTER% >>"%REPORT%"
if defined SCOPE echo without an administrator's rights >>"%REPORT%"
if not defined SCOPE echo with an administrator's rights >>"%REPORT%"
ver >>"%REPORT%"
echo processor: %PROCESSOR_ARCHITECTURE% %PROCESSOR_ARCHITEW6432% %PROCESSOR_IDENTIFIER%, %NUMBER_OF_PROCESSORS% of them >>"%REPORT%"
for %%v in (ProductName DisplayVersion CurrentBuild UBR) do (
    reg query "HKLM\SOFTWARE\Microsoft\Windows NT\CurrentVersion" /v %%v >>"%REPORT%" 2>nul
)
reg query "HKCU\Control Panel\International" /v LocaleName >>"%REPORT%" 2>nul
reg query "HKCU\Control Panel\Desktop\WindowMetrics" /v AppliedDPI >>"%REPORT%" 2>nul

echo The tests open windows and move the pointer. Please do not touch mouse and keyboard until they have ended.
if defined REGISTER64 call :bitness x64 64 "%REGISTER64%"
if defined REGISTER32 call :bitness x86 32 "%REGISTER32%"

echo.>>"%REPORT%"
echo programs of tests: %PASSED% passed, %FAILED% failed >>"%REPORT%"
echo Programs of tests: %PASSED% passed, %FAILED% failed
echo The report is in "%REPORT%"
call :wait
if not "%FAILED%"=="0" exit /b 1
if "%PASSED%"=="0" exit /b 1
exit /b 0

rem :leftover FOLDER BITS REGISTER: takes these libraries out of the registry, but none that is somewhere else.
:leftover
for %%d in ("%HERE%..\%~1") do set "KWO_DIST=%%~fd"
set "REGISTER=%~3"
set "SCOPE=/n /i:user"
call :takeout HKCU %~2
set "SCOPE="
call :takeout HKLM %~2
exit /b 0

rem :takeout ROOT BITS
:takeout
set "KEY=%~1\Software\Classes\CLSID\@TIMER@\InprocServer32"
reg query "%KEY%" /ve /reg:%~2 2>nul | "%SystemRoot%\System32\find.exe" "%KWO_DIST%\KWOUtil.dll" >nul
if errorlevel 1 exit /b 0
call :register "/s /u" KWOInit.dll
call :register "/s /u" KWOUtil.dll
exit /b 0

rem :bitness FOLDER BITS REGISTER
:bitness
for %%d in ("%HERE%..\%~1") do set "KWO_DIST=%%~fd"
set "KWO_BITS=%~2"
set "KWO_README=%HERE%README.md"
set "REGISTER=%~3"
set "TESTS=%HERE%%~1"
echo.>>"%REPORT%"
echo ==== %~2-bit, installed ==== >>"%REPORT%"
call :register /s KWOUtil.dll
call :register /s KWOInit.dll
"%KWO_DIST%\kwocheck.exe" >>"%REPORT%" 2>&1
call :count "%~2-bit kwocheck"
rem In this order the keys go that the first of them has made.
call :register "/s /u" KWOInit.dll
call :register "/s /u" KWOUtil.dll
call :run manifest\com_unit_tests
call :run contract_tests
call :run kwohost_tests
call :run kwoinit_com_tests
call :run import_fault_tests
call :register /s KWOInit.dll
call :run com_tests
call :register "/s /u" KWOInit.dll
exit /b 0

rem :register SWITCHES FILE
:register
"%REGISTER%" %~1 %SCOPE% "%KWO_DIST%\%~2"
if errorlevel 1 echo regsvr32 %~1 %SCOPE% %~2: failed >>"%REPORT%"
exit /b 0

rem :run PROGRAM: what failed and the totals go to the report.
:run
echo.>>"%REPORT%"
echo ==== %KWO_BITS%-bit, %~1 ==== >>"%REPORT%"
echo %KWO_BITS%-bit, %~1 ...
"%TESTS%\%~1.exe" --gtest_brief=1 --gtest_color=no "--gtest_filter=%FILTER%" >>"%REPORT%" 2>&1
call :count "%KWO_BITS%-bit %~1"
exit /b 0

rem :count NAME: of the program that has just ended.
:count
set "CODE=%ERRORLEVEL%"
echo %~1: exit code %CODE% >>"%REPORT%"
if "%CODE%"=="0" set /a PASSED+=1 >nul
if not "%CODE%"=="0" set /a FAILED+=1 >nul
exit /b 0

:incomplete
echo The tests cannot run: there are files missing.
echo What to do: unpack the whole ZIP file into a folder, and start run_tests.cmd in its folder tests.
call :wait
exit /b 2

:installed
echo The tests cannot run: KWOUtil is installed on this computer, and the tests would remove it.
echo What to do: start uninstall.cmd (or uninstall.cmd /machine, or remove KWOUtil in the settings of Windows).
call :wait
exit /b 2

:noreport
echo The tests cannot run: the report cannot be written to
echo     "%REPORT%"
echo What to do: unpack the ZIP file into a folder where you may write.
call :wait
exit /b 2

:wait
if not defined QUIET pause
exit /b 0
