@echo off
rem Registers the automation server in this folder, for all users or, if that is refused, for this user.
if exist "%SystemRoot%\SysWOW64\regsvr32.exe" (set regsvr32=%SystemRoot%\SysWOW64\regsvr32.exe) else (set regsvr32=regsvr32.exe)
"%regsvr32%" /s "%~dp0Bx6vbwiz.dll"
if errorlevel 1 (
  echo %~dp0Bx6vbwiz.dll could not be registered.
  exit /b 1
)
echo Registered %~dp0Bx6vbwiz.dll. Leave it where it is; unregister.cmd removes the registration.
