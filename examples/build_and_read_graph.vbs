' Builds a small trend graph with the ZELGraph control and prints what it
' holds: its axes, its datasets with their values, and an error message.
'
' Register the control first, then run this script with a scripting host:
'   wine regsvr32 build\win64\bin\ZELGraph.dll
'   wine cscript //nologo examples\build_and_read_graph.vbs
Option Explicit

Dim graph
Set graph = CreateObject("ZELGraph.VX_Graph")

' A time axis along the bottom, a value axis on the left and one on the right.
graph.AddXAxis 1, "TIME", Empty, 0
graph.AddYAxis 1, "REAL", Empty, 0
graph.AddYAxis 2, "INTEGER", Empty, 0, "RIGHT"

' Two curves: temperatures on the left axis, a counter as bars on the right.
graph.AddDataset 100, "PLOT", 1, 1, Empty
graph.AddDataset 200, "BAR", 1, 2, Empty

Dim start, times, temperatures, counts, statuses
start = DateSerial(2026, 11, 21) + TimeSerial(8, 0, 0)
times = Array(start, start + 1 / 24, start + 2 / 24, start + 3 / 24)
temperatures = Array(20.5, 21.25, 22.75, 21.5)
counts = Array(3, 7, 4, 9)
' One 32-bit status per point, 0 for "draw it normally". The control copies
' the statuses from the array's memory as 32-bit integers, whatever the
' array holds, and VBScript only makes arrays of VARIANTs: Array(0, 0, 0, 0)
' would give the first point status 2 (the type tag of a VARIANT holding an
' Integer). A freshly dimensioned array is all zero bytes, so it reads as
' statuses of 0, and it holds four times the statuses it needs.
ReDim statuses(UBound(times))
graph.SetDatasetValues 100, times, temperatures, statuses
graph.SetDatasetValues 200, times, counts, statuses

' A limit line at 22 degrees and a hairline in the middle of the plot.
graph.AddLimitValue 1, 22
graph.AddHairline 50

Dim axes, entry
axes = graph.EnumXAxes
For Each entry In axes
  WScript.Echo "X axis " & entry(0) & ", type " & entry(2)
Next
axes = graph.EnumYAxes
For Each entry In axes
  WScript.Echo "Y axis " & entry(0) & ", type " & entry(2)
Next

Dim datasets, values, xs, ys, i
datasets = graph.EnumDatasets
For Each entry In datasets
  WScript.Echo "Dataset " & entry(0) & ", type " & entry(2)
  values = graph.GetDatasetValues(entry(0))
  xs = values(0)
  ys = values(1)
  For i = 0 To UBound(xs)
    WScript.Echo "  " & FormatDateTime(xs(i), vbShortTime) & "  " & ys(i)
  Next
Next

' Errors come back with the control's message.
On Error Resume Next
graph.AddDataset 100, "PLOT", 1, 1, Empty
WScript.Echo "Adding dataset 100 again: " & Err.Description
Err.Clear
