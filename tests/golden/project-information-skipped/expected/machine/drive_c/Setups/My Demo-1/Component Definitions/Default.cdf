[General]
Type=COMPONENTDEFINITION
Version=1.00.000
[Components]
component0=Program Files
0component=Program Files\VB Runtime Object
[TopComponents]
component0=Program Files
[Program Files]
DESCRIPTION=Program Files
STATUS=Installing Program Files...
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
0MEMBER=Program Files\VB Runtime Object
0required=Program Files\VB Runtime Object
[SETUPTYPEITEM-CUSTOM]
ITEM0=Program Files
[SETUPTYPEITEM-TYPICAL]
ITEM0=Program Files
[SETUPTYPEITEM-COMPACT]
ITEM0=Program Files
[Program Files\VB Runtime Object]
MONIKER=@bxmk:4F6A11A0-1D1C-11D3-8B09-00105A9846E9
GUID=<a new GUID>
VISIBLE=No
OBJECT=Yes
