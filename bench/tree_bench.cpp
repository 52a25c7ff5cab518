// A rebuild of the network tree for the largest network the records hold: 501 nodes, 51
// PDOs and 101 parameters each (77,656 items).

#include "bench/full_network.h"
#include "tree/network_tree.h"

#include <benchmark/benchmark.h>

namespace {

void BM_RebuildFullNetworkTree(benchmark::State& state) {
    static const velmora::Network network = velmora::bench::FullNetwork();
    velmora::NetworkTree tree;
    for (auto _ : state) {
        const auto result = tree.RebuildNetworkTree(network, false);
        benchmark::DoNotOptimize(result.SelectedItem);
    }
    state.counters["items"] = tree.Size();
}
BENCHMARK(BM_RebuildFullNetworkTree)->Unit(benchmark::kMillisecond);

// The first rebuild, with the tree's buffers still to be allocated.
void BM_RebuildFullNetworkTreeFresh(benchmark::State& state) {
    static const velmora::Network network = velmora::bench::FullNetwork();
    for (auto _ : state) {
        velmora::NetworkTree tree;
        const auto result = tree.RebuildNetworkTree(network, false);
        benchmark::DoNotOptimize(result.SelectedItem);
    }
}
BENCHMARK(BM_RebuildFullNetworkTreeFresh)->Unit(benchmark::kMillisecond);

} // namespace
