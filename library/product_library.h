#pragma once

// The product library on disk: the application folder's lib/ holds one folder per category
// and each product is the file NAME.libs in its category's folder (library/product_file.h).
// The library keeps no state of its own: every operation looks at the folder as it is now, so
// a change made by another program shows at the next listing.
//
// Failures the user causes (a name that cannot be a file name, a product that already exists
// or does not, a category that is not empty) are outcomes with an Italian message. A file
// system that refuses an operation, and a damaged product read by LoadProduct, are
// RuntimeErrors naming the path.

#include "library/product_file.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct Node;

// appDirectory + "/lib/".
std::string LibraryDirectory(const std::string& appDirectory);

// Why name cannot be a category or product name, nullopt when it can: empty, starting with
// ".", holding "/", "\" or a control character, or longer than a file name may be.
std::optional<std::string> NameProblem(std::string_view name);

struct LibraryProduct {
    std::string Name; // the file name without ".libs"
    ProductSummary Summary;
};

struct LibraryCategory {
    std::string Name;
    std::vector<LibraryProduct> Products; // sorted by name
};

struct LibraryListing {
    std::vector<LibraryCategory> Categories; // sorted by name
    // One "path: reason" line per product file that was refused; it is left out of its
    // category and the others are listed.
    std::vector<std::string> Problems;
};

enum class LibraryStatus {
    Done,
    Exists,  // the product or category named as the target is already there
    Refused, // a bad name, a missing product or category, a category that is not empty
};

struct LibraryOutcome {
    LibraryStatus Status = LibraryStatus::Done;
    std::string Message; // empty when Done

    bool Done() const { return Status == LibraryStatus::Done; }
    bool operator==(const LibraryOutcome&) const = default;
};

class ProductLibrary {
public:
    // directory is the library folder, with or without its trailing separator.
    explicit ProductLibrary(std::string directory);

    const std::string& Directory() const { return directory_; }
    std::string CategoryPath(std::string_view category) const;
    std::string ProductPath(std::string_view category, std::string_view name) const;

    // Every category (a folder of lib/ whose name is a valid name) with its products (files
    // ending in ".libs"), each read as a summary. A missing lib/ is an empty library.
    LibraryListing List() const;
    // The category names alone, sorted.
    std::vector<std::string> Categories() const;

    // Stores node as product name of category, creating the category's folder when it is new.
    // An existing product is replaced only with replace; otherwise the outcome is Exists and
    // nothing is written.
    LibraryOutcome Save(std::string_view category, std::string_view name, const Node& node,
                        bool replace) const;
    // Reads product name of category into node. A missing product is Refused; a damaged file
    // is the RuntimeError of ReadProductFile, node left untouched.
    LibraryOutcome Load(std::string_view category, std::string_view name, Node& node) const;

    LibraryOutcome RemoveProduct(std::string_view category, std::string_view name) const;
    LibraryOutcome RenameProduct(std::string_view category, std::string_view name,
                                 std::string_view newName) const;
    // Moves the product into another existing category, keeping its name.
    LibraryOutcome MoveProduct(std::string_view category, std::string_view name,
                               std::string_view toCategory) const;

    LibraryOutcome CreateCategory(std::string_view category) const;
    // Only an empty category (no file or folder in it) is removed.
    LibraryOutcome RemoveCategory(std::string_view category) const;
    LibraryOutcome RenameCategory(std::string_view category, std::string_view newName) const;

private:
    // The refusal of an operation on an existing product: a bad category or product name, a
    // missing category, a missing product; nullopt when the product is there.
    std::optional<LibraryOutcome> RefuseUnlessThere(std::string_view category,
                                                    std::string_view name) const;

    std::string directory_; // ends with the separator
};

} // namespace velmora
