Attribute VB_Name = "modReport"
