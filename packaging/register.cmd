@echo off
rem Registers the DLLs of this folder: as administrator for all users, otherwise for you alone.
rem They must stay where they are from now on; unregister.cmd takes the registration back.
setlocal
set what=registered
set option=

rem A 32-bit command prompt on 64-bit Windows sees the 64-bit programs under another name.
set "native=%SystemRoot%\System32"
if defined PROCESSOR_ARCHITEW6432 set "native=%SystemRoot%\Sysnative"
set failed=
if "%PROCESSOR_ARCHITECTURE%"=="x86" if not defined PROCESSOR_ARCHITEW6432 goto only32
rem The 64-bit DLLs come last: the folder of the help file, which both write, is theirs.
if exist "%SystemRoot%\SysWOW64\regsvr32.exe" call :each "%SystemRoot%\SysWOW64\regsvr32.exe" "%~dp0x86\"
call :each "%native%\regsvr32.exe" "%~dp0"
goto end
:only32
call :each "%native%\regsvr32.exe" "%~dp0x86\"
:end
if defined failed exit /b 1
exit /b 0

:each
for %%f in (Zuengine.dll ZuDBFFunctions.dll) do call :one %1 "%~2%%f"
goto :eof
:one
%1 /s %option% %2
if errorlevel 1 goto bad
echo %what%: %~2
goto :eof
:bad
set failed=1
echo not %what%: %~2
goto :eof
