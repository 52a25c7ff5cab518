#include "eds/eds_object_table.h"

#include "model/runtime_error.h"
#include "model/text.h"

#include <utility>

namespace velmora {

EdsObject UnreadEdsObject() {
    EdsObject object;
    object.HighLimit = 999999999;
    object.AccessType = "0";
    object.DefaultValue = "0";
    return object;
}

EdsObjectTable::EdsObjectTable()
    : objects_(kLastEdsObject + 1), indexNumbers_(kLastEdsObject + 1, 0),
      subNumbers_(kLastEdsObject + 1, 0) {}

const EdsObject& EdsObjectTable::At(int position) const {
    CheckIndex(position, 0, kLastEdsObject, "Oggetto EDS");
    return objects_[static_cast<std::size_t>(position)];
}

int EdsObjectTable::FindPosition(std::int32_t index, std::int16_t subIndex) const {
    const int last = count_;
    for (int p = 1; p <= last; ++p) {
        const auto at = static_cast<std::size_t>(p);
        if (indexNumbers_[at] == index && (subIndex == -1 || subNumbers_[at] == subIndex)) {
            return p;
        }
    }
    return 0;
}

void EdsObjectTable::BeginLoad() {
    count_ = 1;
    const EdsObject unread = UnreadEdsObject();
    for (int p = 1; p <= dirtyUpTo_; ++p) {
        objects_[static_cast<std::size_t>(p)] = unread;
    }
    dirtyUpTo_ = 0;
    indexNumbers_[1] = 0;
    subNumbers_[1] = 0;
}

void EdsObjectTable::AddSection(std::int32_t index, std::int32_t subIndex) {
    CheckIndex(count_ + 1, 0, kLastEdsObject, "Oggetto EDS");
    ++count_;
    if (dirtyUpTo_ < count_) {
        dirtyUpTo_ = count_;
    }
    const auto at = static_cast<std::size_t>(count_);
    EdsObject& object = objects_[at];
    object.IndexText = DecimalText(index);
    object.SubIndexText = DecimalText(subIndex);
    object.IsMainObject = subIndex == -1 ? -1 : 0;
    indexNumbers_[at] = index;
    subNumbers_[at] = subIndex;
}

void EdsObjectTable::StoreSectionKeys(EdsObject&& keys) {
    EdsObject& object = objects_[static_cast<std::size_t>(count_)];
    object.ParameterName = std::move(keys.ParameterName);
    object.ObjectType = keys.ObjectType;
    object.DataType = keys.DataType;
    object.LowLimit = keys.LowLimit;
    object.HighLimit = keys.HighLimit;
    object.AccessType = std::move(keys.AccessType);
    object.DefaultValue = std::move(keys.DefaultValue);
    object.PdoMapping = keys.PdoMapping;
    object.ObjFlags = std::move(keys.ObjFlags);
    object.SubNumber = keys.SubNumber;
}

EdsObject GetEdsObject(const EdsObjectTable& table, int position) {
    return table.At(position);
}

std::int16_t GetEdsObjectCount(const EdsObjectTable& table) {
    return table.EdsObjectCount();
}

EdsObjectMatch FindEdsObject(const EdsObjectTable& table, std::int32_t index,
                             std::int16_t subIndex) {
    const int position = table.FindPosition(index, subIndex);
    if (position == 0) {
        return {};
    }
    return {table.At(position), true};
}

EdsPdoCounts CountEdsPdos(const EdsObjectTable& table) {
    EdsPdoCounts counts;
    for (std::int32_t i = 0x1800; i <= 0x1810; ++i) {
        if (table.FindPosition(i, 2) != 0 && table.FindPosition(i + 0x200, -1) != 0) {
            ++counts.txCount;
        }
    }
    for (std::int32_t i = 0x1400; i <= 0x1410; ++i) {
        if (table.FindPosition(i, -1) != 0 && table.FindPosition(i + 0x200, -1) != 0) {
            ++counts.rxCount;
        }
    }
    return counts;
}

} // namespace velmora
