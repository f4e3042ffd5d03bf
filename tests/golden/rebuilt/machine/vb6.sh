#!/bin/sh
# Stands for the compiler: does as it was asked, and shows what that was.
echo "program" >"$BXVBWIZ_MACHINE/drive_c/Src/Demo/Demo.exe"
printf '%s\n' "$@" >"$BXVBWIZ_MACHINE/drive_c/Src/Demo/arguments.txt"
printf 'Building.\r\nBuild of Demo.exe succeeded.\r\n' >"$BXVBWIZ_MACHINE/drive_c/windows/_BxVbErr.txt"
