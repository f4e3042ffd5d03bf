[Components]
component0=Help Files
component1=Program Files
0component=Program Files\Other Object
[TopComponents]
component0=Help Files
component1=Program Files
[SETUPTYPEITEM-TYPICAL]
ITEM0=Program Files
[Program Files]
DESCRIPTION=Ours
filegroup0=Program Files
filegroup1=Our Files
required0=Help Files
0MEMBER=Program Files\Other Object
[Help Files]
DESCRIPTION=Help
