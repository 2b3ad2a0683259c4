@echo off
rem Runs every test program of the kit and writes report.txt.
"%~dp0check.exe" %*
set result=%errorlevel%
if "%~1"=="" pause
exit /b %result%
