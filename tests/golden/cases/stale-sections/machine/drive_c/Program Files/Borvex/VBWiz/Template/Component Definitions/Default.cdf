[General]
Version=1.00.000
[Windows Files]
STALE=1
[Program Files\VB Runtime Object]
STALE=1
