// Feeds arbitrary bytes to the product-file reader as if they were a ".libs" file. The reader
// must refuse with a RuntimeError or accept the whole file; the summary must agree with the
// full read, and a product that was accepted must write and read back to the same node.

#include "library/product_file.h"
#include "model/network.h"
#include "model/runtime_error.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    auto node = std::make_unique<velmora::Node>();
    bool accepted = true;
    try {
        velmora::ReadProductFile(bytes, "/fuzz/input.libs", *node);
    } catch (const velmora::RuntimeError&) {
        accepted = false;
    }
    bool summarised = true;
    try {
        const velmora::ProductSummary summary =
            velmora::ReadProductSummary(bytes, "/fuzz/input.libs");
        if (accepted &&
            (summary.EdsName != node->EdsName || summary.TxPdoCount != node->TxPdoCount ||
             summary.RxPdoCount != node->RxPdoCount ||
             summary.ParameterCount != node->ParameterCount)) {
            __builtin_trap();
        }
    } catch (const velmora::RuntimeError&) {
        summarised = false;
    }
    if (accepted != summarised) {
        __builtin_trap();
    }
    if (accepted) {
        auto again = std::make_unique<velmora::Node>();
        velmora::ReadProductFile(velmora::ProductFileBytes(*node), "/fuzz/again.libs", *again);
        if (!(*again == *node)) {
            __builtin_trap();
        }
    }
    return 0;
}
