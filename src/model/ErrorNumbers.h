// The numbers of the TessalyErrors that the simulated handset throws; the
// panel's error report shows them beside the description.
#pragma once

#include <cstdint>

namespace tessaly::model {

enum ErrorNumber : int32_t {
    errValueRefused = 1001, // a value that its item cannot hold
    errItemUnreadable = 1002, // the memory did not give an item
    errItemUnwritable = 1003, // the memory did not take an item
    errMemoryNotSaved = 1004, // the memory could not keep what was written
    errNothingRead = 1005, // a write or restore before any read
};

} // namespace tessaly::model
