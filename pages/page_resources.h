/* Resource ids of the settings pages, shared by resources/zelgraph.rc and
 * the pages. Labels, group boxes and check boxes carry the id of their text
 * (RelabelDialog gives them that text); fields carry ids from 1000 up,
 * which have no text, so relabelling leaves what they hold alone. */
#pragma once

/* Dialog templates of the pages. */
#define ZEL_GRAPH_PAGE_DIALOG 150
#define ZEL_AXES_PAGE_DIALOG 151
#define ZEL_CURVE_PAGE_DIALOG 152

/* Fields of the graph settings page. */
#define ZEL_MARGIN_LEFT 1001
#define ZEL_MARGIN_RIGHT 1002
#define ZEL_MARGIN_BOTTOM 1003
#define ZEL_MARGIN_TOP 1004
#define ZEL_MOUSE_MODE 1005
#define ZEL_LEGEND_POSITION 1006
#define ZEL_GRID_LINES 1007
#define ZEL_GRID_COLOR 1008
#define ZEL_BACK_COLOR 1009
#define ZEL_SNAP_BOUND 1010

/* Fields of the curve properties page. */
#define ZEL_CURVE_CHOICE 1200
#define ZEL_CURVE_TYPE 1201
#define ZEL_CURVE_Y_AXIS 1202
#define ZEL_LINE_STYLE 1203
#define ZEL_LINE_WIDTH 1204
#define ZEL_LINE_COLOR 1205
#define ZEL_MARKER_SHAPE 1206
#define ZEL_MARKER_COLOR 1207
#define ZEL_FILL_COLOR 1208
#define ZEL_FILL_TO 1209
#define ZEL_BAR_WIDTH 1210
/* Fields of the axes page. */
#define ZEL_AXIS_X 1100
#define ZEL_AXIS_Y1 1101
#define ZEL_AXIS_Y2 1102
#define ZEL_AXIS_Y3 1103
#define ZEL_AXIS_Y4 1104
#define ZEL_AXIS_MIN 1105
#define ZEL_AXIS_MAX 1106
#define ZEL_AXIS_GRID_MODE 1107
#define ZEL_AXIS_GRID_STYLE 1108
#define ZEL_AXIS_GRID_WIDTH 1109
#define ZEL_AXIS_GRID_COLOR 1110
#define ZEL_AXIS_TITLE 1111
#define ZEL_UNIT_NAME_Y1 1112
#define ZEL_UNIT_NAME_Y2 1113
#define ZEL_UNIT_NAME_Y3 1114
#define ZEL_UNIT_NAME_Y4 1115
#define ZEL_AXIS_SIDE 1116
