// Python's objects as cells and cells as Python's objects. All of it is called with Python's lock held.
#pragma once

#include "addin/function.h"
#include "hosts/sheet/value.h"

#include <cstddef>
#include <memory_resource>

struct _object; // what Python calls PyObject

namespace qx::python {

/// Memory of the cells of one call: the arrays and texts that they point to.
class CellMemory {
  public:
    CellMemory() : resource_(room_, sizeof room_) {}
    CellMemory(const CellMemory&) = delete;
    CellMemory& operator=(const CellMemory&) = delete;
    OPER* cells(std::size_t count);
    unsigned char* bytes(std::size_t count);
    void clear() { resource_.release(); }

  private:
    alignas(OPER) std::byte room_[1024];
    std::pmr::monotonic_buffer_resource resource_;
};

/// A number as a cell: NaN is #N/A, and what is infinite is #NUM!.
OPER cell_of(double number);
/// One value as a cell of an argument's kind: None is an omitted argument, a day is its date number, and so is an ISO
/// text unless the kind takes texts as they are. Throws if there is no such cell.
OPER cell_of(_object* value, Kind kind, CellMemory& memory);
/// A list, a list of lists or an array as a column or a table of cells.
OPER table_of(_object* values, Kind items, CellMemory& memory);
/// True for lists, tuples, arrays of one dimension or more, series and whatever else has a length but is no text.
bool is_many(_object* value);
/// True for the kinds of argument that take a list as a whole; any other is called with each item of it.
bool takes_many(Kind kind);

/// What a function has returned, as a new reference. A list comes as an array also if it has one item or none.
_object* object_of(const OPER& cell, const Calls& calls);
/// The date number of a cell as datetime.date, with a time of day as datetime.datetime; None for no date.
_object* date_of(double serial);
/// A value of a workbook: dates where it shows dates, CellError for an error value, None for a blank.
_object* object_of(const sheet::Value& value);
/// The other way round: a string that is a formula or looks like a date stays a string.
sheet::Value value_of(_object* object);

} // namespace qx::python
