#pragma once
// The AxisProps and DatasetProps automation records, to and from the
// engine's records.
#include <windows.h>
#include <oaidl.h>

#include "engine/axis_props.h"
#include "engine/dataset_props.h"
#include "zelgraph_idl.h"

namespace zel {

// Where a props argument's record is: the VARIANT's own (its type byte has
// the bits 0x24), or that of the VARIANT it refers to (bits 0x0C; the
// referred VARIANT must then be a record). `wrongShape` is set when the
// reference holds something else, or the record is not really of the
// library's type `recordGuid`: a record claiming that GUID must also have
// its size and match its type.
void* RecordOf(const VARIANT& props, REFGUID recordGuid, bool& wrongShape);

// Reads a host's record. Its annotationFormat is ignored and, as the control
// has always done, cleared in the host's record (without freeing it).
AxisProps AxisPropsFromRecord(::AxisProps& record);
DatasetProps DatasetPropsFromRecord(const ::DatasetProps& record);

// A new VT_RECORD VARIANT holding the engine's record.
void AxisPropsToVariant(const AxisProps& props, VARIANT* out);
void DatasetPropsToVariant(const DatasetProps& props, VARIANT* out);

extern const GUID kAxisPropsGuid;
extern const GUID kDatasetPropsGuid;

}  // namespace zel
