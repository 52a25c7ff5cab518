#include "eds/object_list.h"

#include "eds/eds_object_table.h"
#include "model/numeric.h"
#include "model/runtime_error.h"
#include "model/text.h"

namespace velmora {

std::vector<ListedObject> BuildObjectList(const EdsObjectTable& table) {
    std::vector<ListedObject> list;
    for (int position = 1; position <= table.EdsObjectCount(); ++position) {
        const EdsObject& entry = table.At(position);
        if (entry.IndexText.empty()) {
            continue;
        }
        const auto subIndex = static_cast<std::int32_t>(ReadNumber(entry.SubIndexText));
        if (entry.ObjectType != 7 && subIndex <= -1) {
            continue; // the header of a record or an array
        }
        if (list.size() > static_cast<std::size_t>(kLastListedObject)) {
            throw RuntimeError(ErrorCode::SubscriptOutOfRange, "l'EDS elenca più di 3501 oggetti");
        }
        ListedObject object;
        object.Name = entry.ParameterName;
        object.ObjectType = entry.ObjectType;
        object.DataType = entry.DataType;
        object.Index = static_cast<std::int32_t>(ReadNumber(entry.IndexText));
        object.SubIndex = subIndex;
        object.DefaultValue = entry.DefaultValue;
        object.PdoMappable = entry.PdoMapping != 0;
        object.Writable = entry.AccessType != "ro";
        list.push_back(std::move(object));
    }
    return list;
}

std::string ObjectItemText(const ListedObject& object) {
    std::string text = "[" + HexText(object.Index);
    if (object.SubIndex >= 0) {
        text += " sub " + HexText(object.SubIndex);
    }
    return text + "] " + object.Name;
}

std::string NameFromChooserText(std::string_view text) {
    const std::size_t bracket = text.find(']');
    if (bracket == std::string_view::npos) {
        return std::string(text);
    }
    const std::string_view rest = text.substr(bracket + 1);
    return std::string(rest.substr(CharOffset(rest, 1)));
}

int BytesForDataType(std::int32_t dataType) {
    switch (dataType) {
    case 1:
    case 2:
    case 5:
        return 1;
    case 3:
    case 6:
        return 2;
    case 10:
    case 16:
        return 3;
    case 4:
    case 7:
    case 8:
        return 4;
    case 12:
    case 18:
        return 5;
    case 13:
    case 19:
        return 6;
    case 14:
    case 26:
        return 7;
    case 11:
    case 15:
    case 27:
        return 8;
    default:
        return 0;
    }
}

} // namespace velmora
