#pragma once

// What the main window's tests need besides the scripted dialogs: a settings store that keeps
// nothing, a text viewer that records what it opened, and the tree item with a given key.

#include "interfaces/settings_store.h"
#include "interfaces/text_viewer.h"
#include "tree/network_tree.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace velmora::test {

class NoSettings : public SettingsStore {
public:
    void Write(const std::string&, const std::string&, const std::string&) override {}
};

class RecordingViewer : public TextViewer {
public:
    std::vector<std::string> opened;
    void Open(const std::string& path) override { opened.push_back(path); }
};

// The index of the item whose key is key; a test failure and -1 when there is none.
inline int ItemWithKey(const NetworkTree& tree, std::string_view key) {
    for (int i = 0; i < tree.Size(); ++i) {
        if (tree.Key(i) == key) {
            return i;
        }
    }
    ADD_FAILURE() << "no item " << key;
    return -1;
}

} // namespace velmora::test
