#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "eds/object_list.h"
#include "model/runtime_error.h"

#include <sstream>

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(ObjectList, ListsVariablesAndSubEntriesButNotHeaders) {
    std::istringstream eds("[1A00]\nParameterName=TPDO1 mapping\nObjectType=0x9\n"
                           "[1A00sub1]\nParameterName=Map 1\nObjectType=0x7\n"
                           "[6064]\nParameterName=Position actual value\nObjectType=0x7\n"
                           "DataType=0x0004\nAccessType=ro\nPDOMapping=1\n"
                           "[2000sub1A]\nParameterName=Gain\nAccessType=rw\n");
    EdsObjectTable table;
    LoadEds(table, eds);
    const std::vector<ListedObject> list = BuildObjectList(table);
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(ObjectItemText(list[0]), "[1A00 sub 1] map 1");
    EXPECT_EQ(ObjectItemText(list[1]), "[6064] position actual value");
    EXPECT_TRUE(list[1].PdoMappable && !list[1].Writable);
    EXPECT_EQ(ObjectItemText(list[2]), "[2000 sub 1A] gain");
    EXPECT_TRUE(list[2].Writable && !list[2].PdoMappable);
}

TEST(ObjectList, DataTypeTableKeepsItsPairsAndGaps) {
    const std::pair<int, int> cases[] = {{1, 1},  {2, 1},  {5, 1},  {3, 2},  {6, 2},  {10, 3},
                                         {16, 3}, {4, 4},  {7, 4},  {8, 4},  {12, 5}, {18, 5},
                                         {13, 6}, {19, 6}, {14, 7}, {26, 7}, {11, 8}, {15, 8},
                                         {27, 8}, {9, 0},  {17, 0}, {0, 0},  {-1, 0}};
    for (const auto& [type, bytes] : cases) {
        EXPECT_EQ(BytesForDataType(type), bytes) << type;
    }
}

TEST(ObjectList, MoreThan3501ListedObjectsIsARunTimeError) {
    std::string text;
    for (int i = 0; i < 3503; ++i) { // a header on the last line is not read
        text += "[2" + std::to_string(100 + i % 900) + "sub" + std::to_string(i / 900) + "]\n";
    }
    std::istringstream eds(text);
    EdsObjectTable table;
    LoadEds(table, eds);
    EXPECT_THROW(BuildObjectList(table), RuntimeError);
}

} // namespace
} // namespace velmora
