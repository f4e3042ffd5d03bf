[General]
Version=1.00.000
[Components]
component0=Program Files
component1=Windows Files
0component=Program Files\VB Runtime Object
[TopComponents]
component0=Program Files
component1=Windows Files
[Program Files]
DESCRIPTION=Program Files
STATUS=Installing Demo
DISPLAYTEXT=Program Files
VISIBLE=Yes
FILENEED=CRITICAL
INCLUDEINBUILD=Yes
PASSWORD=
ENCRYPT=No
TARGETDIRCDROM=
FTPLOCATION=
HTTPLOCATION=
MISC=
COMMENT=
SELECTED=Yes
UNINSTALLABLE=Yes
HANDLERONUNINSTALLING=
HANDLERONINSTALLED=
HANDLERONINSTALLING=
HANDLERONUNINSTALLED=
DEFSELECTION=
OBJECT=No
filegroup0=Program Files
filegroup1=Manual
required0=Windows Files
0MEMBER=Program Files\VB Runtime Object
0required=Program Files\VB Runtime Object
[SETUPTYPEITEM-CUSTOM]
ITEM0=Program Files
[SETUPTYPEITEM-TYPICAL]
ITEM0=Program Files
ITEM1=Windows Files
[SETUPTYPEITEM-COMPACT]
ITEM0=Program Files
ITEM1=Windows Files
[Windows Files]
DESCRIPTION=Windows Files
STATUS=Installing Windows Files...
DISPLAYTEXT=Windows Files
VISIBLE=Yes
FILENEED=CRITICAL
INCLUDEINBUILD=Yes
PASSWORD=
ENCRYPT=No
TARGETDIRCDROM=
FTPLOCATION=
HTTPLOCATION=
MISC=
COMMENT=
SELECTED=Yes
UNINSTALLABLE=Yes
HANDLERONUNINSTALLING=
HANDLERONINSTALLED=
HANDLERONINSTALLING=
HANDLERONUNINSTALLED=
DEFSELECTION=
OBJECT=No
requiredby0=Program Files
filegroup0=Windows System Self-reg Shared Files
filegroup1=Windows System Self-reg Files
filegroup2=DAO Files
[Program Files\VB Runtime Object]
MONIKER=@bxmk:4F6A11A0-1D1C-11D3-8B09-00105A9846E9
GUID=37AACC16-00F8-43E3-8688-F461DD738481
VISIBLE=No
OBJECT=Yes
