// The controller export of the largest network the records hold: 501 nodes, 51 PDOs each
// with 11 mappings, 101 parameters (about 37 MB of text).

#include "bench/full_network.h"
#include "export/controller_file.h"

#include <cstdio>
#include <filesystem>
#include <ostream>
#include <streambuf>

#include <benchmark/benchmark.h>

namespace {

// Counts the bytes it is given and keeps none of them.
class CountingBuffer : public std::streambuf {
public:
    std::size_t count = 0;

protected:
    std::streamsize xsputn(const char*, std::streamsize n) override {
        count += static_cast<std::size_t>(n);
        return n;
    }
    int_type overflow(int_type c) override {
        ++count;
        return traits_type::not_eof(c);
    }
};

const velmora::Network& Full() {
    static const velmora::Network network = velmora::bench::FullNetwork();
    return network;
}

void BM_ExportFullNetworkToStream(benchmark::State& state) {
    const velmora::Network& network = Full();
    std::size_t bytes = 0;
    for (auto _ : state) {
        CountingBuffer buffer;
        std::ostream out(&buffer);
        const auto result = velmora::WriteControllerFile(network, out);
        benchmark::DoNotOptimize(result.Complete);
        bytes = buffer.count;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(BM_ExportFullNetworkToStream)->Unit(benchmark::kMillisecond);

void BM_ExportFullNetworkToFile(benchmark::State& state) {
    const velmora::Network& network = Full();
    const std::string path =
        (std::filesystem::temp_directory_path() / "velmora-bench-export.cop").string();
    for (auto _ : state) {
        const auto result = velmora::WriteControllerFile(network, "", path);
        benchmark::DoNotOptimize(result.Complete);
    }
    std::remove(path.c_str());
}
BENCHMARK(BM_ExportFullNetworkToFile)->Unit(benchmark::kMillisecond);

} // namespace
