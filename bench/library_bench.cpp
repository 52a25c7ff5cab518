// Listing a large product library: 50 categories of 40 products each, every product a
// configured drive (4 TX and 4 RX PDOs with 4 mappings each, 20 parameters). Each product
// file is read and checked whole, as the listing does.

#include "library/product_library.h"
#include "model/network.h"
#include "tests/support/network_builder.h"

#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>

namespace {

using namespace velmora;

std::string FilledLibrary() {
    const auto folder = std::filesystem::temp_directory_path() / "velmora-bench-lib";
    std::filesystem::remove_all(folder);
    Network network = test::EmptyNetwork();
    Node& node = test::AddNode(network, 4, 4, 4, TransmissionMode::Fast, "drive");
    for (int p = 0; p < 8; ++p) {
        for (int k = 0; k < 4; ++k) {
            test::AddMapping(node.PdoAt(p), "Variabile_" + std::to_string(k), "6064",
                             std::to_string(k), "16");
        }
    }
    for (int k = 0; k < 20; ++k) {
        test::AddParameter(node, "Parametro " + std::to_string(k), "2000", std::to_string(k), "2",
                           std::to_string(k));
    }
    const ProductLibrary library(folder.string());
    for (int c = 0; c < 50; ++c) {
        for (int p = 0; p < 40; ++p) {
            library.Save("Categoria " + std::to_string(c), "Prodotto " + std::to_string(p), node,
                         true);
        }
    }
    return folder.string();
}

void BM_ListLibrary50x40(benchmark::State& state) {
    const ProductLibrary library(FilledLibrary());
    std::size_t products = 0;
    for (auto _ : state) {
        const LibraryListing listing = library.List();
        products = 0;
        for (const LibraryCategory& category : listing.Categories) {
            products += category.Products.size();
        }
        benchmark::DoNotOptimize(products);
    }
    state.counters["products"] = static_cast<double>(products);
    std::filesystem::remove_all(library.Directory());
}
BENCHMARK(BM_ListLibrary50x40)->Unit(benchmark::kMillisecond);

} // namespace
