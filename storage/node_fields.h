#pragma once

// The fields of a Node-layout record, each with its name, in the order the configuration file
// stores them. The record writer and reader walk this list to lay out a record's bytes, and
// velmora-cli's dump walks it to name them, so the order is written down in one place only.
//
// VisitNodeFields(visitor, node) calls, in record order:
//   visitor.Field(name, value)   for every text and number (std::string, std::int16_t,
//                                std::int32_t; const when node is const);
//   visitor.BeginList(name) ... visitor.EndList()
//                                around a fixed array: Pdos, Mappings, Parameters, and
//                                FlagBlock, the first four words of a PDO's flag block, which
//                                have no meaning of their own and go together;
//   visitor.BeginRecord(name) ... visitor.EndRecord()
//                                around a nested record: each element of a list (name empty)
//                                and a PDO's Settings.
// A visitor that needs only the fields derives from FieldsOnly.

#include "model/network.h"

#include <string_view>

namespace velmora {

// The grouping calls of VisitNodeFields, doing nothing.
struct FieldsOnly {
    void BeginList(std::string_view) {}
    void EndList() {}
    void BeginRecord(std::string_view) {}
    void EndRecord() {}
};

template <typename Visitor, typename NodeRef> void VisitNodeFields(Visitor& v, NodeRef& node) {
    v.Field("EdsName", node.EdsName);
    v.Field("TxPdoCount", node.TxPdoCount);
    v.Field("RxPdoCount", node.RxPdoCount);
    v.Field("ParameterCount", node.ParameterCount);
    v.Field("Configured", node.Configured);
    v.Field("Expanded", node.Expanded);
    v.Field("ParameterFolderExpanded", node.ParameterFolderExpanded);
    v.Field("InUse", node.InUse);
    v.BeginList("Pdos");
    for (auto& pdo : node.Pdos) {
        v.BeginRecord("");
        v.Field("DefaultCobId", pdo.DefaultCobId);
        v.Field("Used", pdo.Used);
        v.Field("Note", pdo.Note);
        v.Field("Direction", pdo.Direction);
        v.Field("OwnerSlot", pdo.OwnerSlot);
        v.Field("PdoNumber", pdo.PdoNumber);
        v.BeginList("FlagBlock");
        v.Field("CobId", pdo.Block.CobId);
        v.Field("Comm", pdo.Block.Comm);
        v.Field("Inhibit", pdo.Block.Inhibit);
        v.Field("Event", pdo.Block.Event);
        v.EndList();
        v.Field("NoMapping", pdo.Block.NoMapping);
        auto& settings = pdo.Settings;
        v.BeginRecord("Settings");
        v.Field("CobId", settings.CobId);
        v.Field("EventTime", settings.EventTime);
        v.Field("InhibitTime", settings.InhibitTime);
        v.Field("Comm", settings.Comm);
        v.Field("Mode", settings.Mode);
        v.Field("Bytes", settings.Bytes);
        v.Field("Pcfg", settings.Pcfg);
        v.Field("MappingCount", settings.MappingCount);
        v.BeginList("Mappings");
        for (auto& mapping : settings.Mappings) {
            v.BeginRecord("");
            v.Field("Vcb", mapping.Vcb);
            v.Field("ObjectIndex", mapping.ObjectIndex);
            v.Field("SubIndex", mapping.SubIndex);
            v.Field("Length", mapping.Length);
            v.Field("Used", mapping.Used);
            v.EndRecord();
        }
        v.EndList();
        v.EndRecord();
        v.EndRecord();
    }
    v.EndList();
    v.BeginList("Parameters");
    for (auto& parameter : node.Parameters) {
        v.BeginRecord("");
        v.Field("Name", parameter.Name);
        v.Field("ObjectIndex", parameter.ObjectIndex);
        v.Field("SubIndex", parameter.SubIndex);
        v.Field("ByteCount", parameter.ByteCount);
        v.Field("Value", parameter.Value);
        v.Field("Used", parameter.Used);
        v.EndRecord();
    }
    v.EndList();
    v.Field("Reserved", node.Reserved);
    v.Field("repetitions", node.repetitions);
    v.Field("repetitionTime", node.repetitionTime);
}

} // namespace velmora
