#!/bin/sh
# Stands for a compiler that reports success and writes nothing.
printf 'Building.\r\nBuild of Demo.exe succeeded.\r\n' >"$BXVBWIZ_MACHINE/drive_c/windows/_BxVbErr.txt"
