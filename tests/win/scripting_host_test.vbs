' The control as a scripting host uses it: arrays from Array(...), optional
' arguments left out, errors caught with On Error Resume Next. Prints one
' PASS or FAIL line per check and "done" at the end. (Results are read
' through variables: Wine's VBScript stops at an indexed call result used
' as an argument.)
Option Explicit
Dim g, r
Set g = CreateObject("ZELGraph.VX_Graph")

Sub Check(name, actual, expected)
  If actual = expected Then
    WScript.Echo "PASS " & name
  Else
    WScript.Echo "FAIL " & name & ": got [" & actual & "], expected [" & expected & "]"
  End If
End Sub

g.AddXAxis 1, "TIME", Empty, 0
g.AddYAxis 1, "REAL", Empty, 0
g.AddYAxis 2, "INTEGER", Empty, 0, "RIGHT"
g.AddDataset 10, "PLOT", 1, 1, Empty
g.AddDataset 11, "BAR", 1, 2, Empty
g.SetDatasetValues 10, Array(45000, 45000.5, 45001), Array(1.5, 2.25, 0.1), Array(0, 0, 0)
g.SetDatasetValues 11, Array(45000, 45001), Array(2.5, 3.5), Array(0, 0)

Dim v
v = g.GetDatasetValues(10)
Check "three points", UBound(v(0)), 2
Check "time values come back as dates", TypeName(v(0)(1)), "Date"
Check "real values come back as singles", TypeName(v(1)(2)), "Single"
Check "singles keep single precision", CDbl(v(1)(2)) = 0.1, False
v = g.GetDatasetValues(11)
Check "integers round halves to even", v(1)(0) & "," & v(1)(1), "2,4"

g.SetDatasetValues 10, Array(45002), Array(9), Array(0), 1
v = g.GetDatasetValues(10)
Check "append adds", UBound(v(0)), 3

Dim e
e = g.EnumDatasets
Check "datasets in insertion order", e(0)(0) & "," & e(1)(0), "10,11"
Check "dataset type codes", e(1)(2), 2
Dim other
Set other = CreateObject("ZELGraph.VX_Graph")
Check "empty enumeration stays empty", IsEmpty(other.EnumXAxes), True

On Error Resume Next
g.AddXAxis 1, "REAL", Empty, 0
r = Hex(Err.Number) & ": " & Err.Description : Err.Clear
Check "duplicate axis", r, "80070057: An axis with  id = 1 already exists"
g.AddXAxis 5, "real", Empty, 0
r = Hex(Err.Number) & ": " & Err.Description : Err.Clear
Check "lower-case type", r, "80070057: ""real"" is a wrong Axis type"
g.ClearDataset 99
r = Hex(Err.Number) & ": " & Err.Description : Err.Clear
Check "unknown dataset", r, "80070057: Dataset with id = 99 does NOT exist!"
g.SetDatasetValues 10, 1, Array(1), Array(0)
r = Hex(Err.Number) & ": " & Err.Description : Err.Clear
Check "scalar values", r, "80070057: The argument is not Array"
g.SetDatasetValues 10, Array(1, "x"), Array(1, 2), Array(0, 0), 1
r = Hex(Err.Number) & ": " & Err.Description : Err.Clear
Check "text among numbers", r, "80070057: Wrong value type (index=5) in the Dataset"
v = g.GetDatasetValues(10)
Check "nothing changed by the error", UBound(v(0)), 3
g.AddXAxis 3, "DISCRETE", Empty, 0
g.AddYAxis 3, "DISCRETE", Empty, 0
g.AddDataset 12, "PLOT", 3, 3, Empty
r = Hex(Err.Number) & ": " & Err.Description : Err.Clear
Check "both axes discrete", r, "80070057: Both X and Y axes for the dataset can not be discrete."
g.RemoveYAxis 2
r = Hex(Err.Number) & ": " & Err.Description : Err.Clear
Check "referenced axis", r, "80070057: The Axis 2 is referenced by other axes or datasets."
g.SetClientProperty 3, 1, "n", 1
r = Hex(Err.Number) & ": " & Err.Description : Err.Clear
Check "client property 3", r, "80070057: Client property number must be between 1 and 3"
g.SetClientProperty 2, 1, "n", 1
r = Hex(Err.Number) & ": " & Err.Description : Err.Clear
Check "client property 2", r, "0: "

g.MouseMode = "pan"
Check "mouse mode keywords are case-sensitive", g.MouseMode, "NONE"
g.MouseMode = "PAN"
Check "mouse mode", g.MouseMode, "PAN"

Dim limit, hairline
limit = g.AddLimitValue(1, 2.5)
Check "limit value ids start at 0", limit, 0
limit = g.AddLimitValue(7, 1)
r = Hex(Err.Number) & ": " & Err.Description : Err.Clear
Check "limit on a missing axis", r, "80070057: Axis with  id = 7 does NOT exist"
hairline = g.AddHairline(50)
Check "hairline position in percent", g.GetHairlinePosition(hairline), 50

g.RemoveAllDatasets
Check "datasets removed", IsEmpty(g.EnumDatasets), True
e = g.EnumXAxes
Check "axes stay", UBound(e), 1
g.EraseAll
Check "erase all", IsEmpty(g.EnumYAxes), True
WScript.Echo "done"
