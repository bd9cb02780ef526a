// Opening and closing the add-in: every row registered with a host that takes it.
#include "addin/host.h"
#include "addin/lifecycle.h"
#include "addin/registration.h"

#include <benchmark/benchmark.h>

namespace {

using namespace qx;

class TakingHost : public Host {
  public:
    int call(int xlfn, OPER* result, int, OPER* const*) override {
        static unsigned char path[] = "\014QuexelLb.xll"; // counted
        if (xlfn == xlGetName) *result = {{.str = path}, xltypeStr};
        return xlretSuccess;
    }
};

void open_and_close(benchmark::State& state) {
    TakingHost host;
    Host* const former = set_host(&host);
    for (auto _ : state) {
        xlAutoOpen();
        xlAutoClose();
    }
    set_host(former);
    state.counters["rows"] = static_cast<double>(the_register().size());
}
BENCHMARK(open_and_close)->Name("library opened, all rows registered, and closed: ours")->Unit(benchmark::kMillisecond);

} // namespace
