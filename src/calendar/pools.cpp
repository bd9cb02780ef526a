#include "calendar/anyvalue.h"
#include "calendar/date.h"

namespace qx {

QX_WORK_LIST_STORAGE(date);
QX_WORK_LIST_STORAGE(anyvalue);

QX_RANGE_POOL_STORAGE(date);
QX_RANGE_POOL_STORAGE(anyvalue);
QX_RANGE_POOL_STORAGE(dateorfloat);
QX_RANGE_POOL_STORAGE(floatblank);

} // namespace qx
