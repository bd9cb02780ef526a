// Uses of the core that would go wrong without a word.
#include "core/pools.h"

namespace qx {

double total(Range<double>& values) {
#ifdef RANGE_COPIED // expect: use of deleted function
    Range<double> copy = values;
    return copy.first();
#elif defined(POOL_OF_NO_SLOTS) // expect: no range pool for this type
    return RangePool<float>::get(1).first() + values.first();
#else
    return values.first() + RangePool<double>::get(1).first();
#endif
}

} // namespace qx
