@echo off
rem Removes what register.cmd entered.
if exist "%SystemRoot%\SysWOW64\regsvr32.exe" (set regsvr32=%SystemRoot%\SysWOW64\regsvr32.exe) else (set regsvr32=regsvr32.exe)
"%regsvr32%" /s /u "%~dp0Bx6vbwiz.dll"
if errorlevel 1 (
  echo The registration of %~dp0Bx6vbwiz.dll could not be removed.
  exit /b 1
)
echo Removed the registration of %~dp0Bx6vbwiz.dll. You can now delete this folder.
