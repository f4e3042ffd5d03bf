[General]
Version=1.00.000
