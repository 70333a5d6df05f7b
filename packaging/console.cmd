@echo off
rem A command prompt in which zurun and zugenerate are found. Changes nothing outside this window.
set "ZU_HOME=%~dp0"
set "PATH=%ZU_HOME%;%PATH%"
title ZuDBFFunctions
if not exist "%USERPROFILE%\Documents" goto ready
cd /d "%USERPROFILE%\Documents"
:ready
echo ZuDBFFunctions: table functions for scripts
echo.
echo   zugenerate demo                              makes sample tables in the folder demo
echo   zurun "%ZU_HOME%samples\first.vbs" demo
echo   zurun --help
echo.
if "%~1"=="" cmd /k
