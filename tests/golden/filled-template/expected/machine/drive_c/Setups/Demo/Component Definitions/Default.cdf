[Components]
component0=Help Files
component1=Program Files
0component=Program Files\Other Object
component2=Windows Files
1component=Program Files\VB Runtime Object
[TopComponents]
component0=Help Files
component1=Program Files
component2=Windows Files
[SETUPTYPEITEM-TYPICAL]
ITEM0=Program Files
ITEM1=Windows Files
[Program Files]
DESCRIPTION=Ours
filegroup0=Program Files
filegroup1=Our Files
required0=Help Files
0MEMBER=Program Files\Other Object
required1=Windows Files
1MEMBER=Program Files\VB Runtime Object
0required=Program Files\VB Runtime Object
[Help Files]
DESCRIPTION=Help
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
filegroup2=Windows System Files
[SETUPTYPEITEM-COMPACT]
ITEM0=Windows Files
[Program Files\VB Runtime Object]
MONIKER=@bxmk:4F6A11A0-1D1C-11D3-8B09-00105A9846E9
GUID=<a new GUID>
VISIBLE=No
OBJECT=Yes
