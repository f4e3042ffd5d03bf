#!/bin/sh
# Stands for the compiler: finds an error.
printf 'Compile error in Main.frm.\r\nBuild of Demo.exe failed.\r\n' >"$BXVBWIZ_MACHINE/drive_c/windows/_BxVbErr.txt"
