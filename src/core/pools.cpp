#include "core/pools.h"

namespace qx {

QX_WORK_LIST_STORAGE(double);
QX_WORK_LIST_STORAGE(int);
QX_WORK_LIST_STORAGE(std::string);

QX_RANGE_POOL_STORAGE(double);
QX_RANGE_POOL_STORAGE(int);
QX_RANGE_POOL_STORAGE(std::string);
QX_RANGE_POOL_STORAGE(bool);
QX_RANGE_POOL_STORAGE(ministring);

} // namespace qx
