#include "pdo/cob_id_entry.h"

#include "model/numeric.h"
#include "model/text.h"
#include "model/transmission_mode.h"
#include "pdo/cob_id.h"

namespace velmora {

namespace {

bool IsDigit(char32_t key) {
    return key >= '0' && key <= '9';
}

AlertRequest RangeAlert(bool disablesEditor) {
    AlertRequest alert;
    alert.Source = "pdowin";
    alert.Line1 = "Inserire un valore esadecimale ";
    alert.Line2 = "compreso tra 0x180 e 0x57F";
    alert.Action = "default";
    alert.DisablesEditor = disablesEditor;
    return alert;
}

CobIdCheck Refuse(CobIdEntryState& state, CobIdVerdict verdict) {
    state.FieldText = state.LastAccepted;
    return {verdict, RangeAlert(verdict == CobIdVerdict::RefuseRange)};
}

} // namespace

CobIdCheck CheckCobIdEntry(const Network& network, CobIdEntryState& state) {
    if (!state.Armed) {
        state.Armed = true;
        return {};
    }
    if (!state.CobIdSwitch || TransmissionMode::IsNotConfigured(state.Mode) ||
        state.Mode == TransmissionMode::Disabled) {
        return {};
    }
    if (state.FieldText == state.LastAccepted || state.Loading) {
        return {};
    }

    const std::string_view trimmed = Trim(state.FieldText);
    std::string hexText;
    double value = 0;
    if (state.Base == "d") {
        value = RoundHalfEven(ReadNumber(trimmed));
        // Three characters such as "1e9" can still leave 16 bits: the range test refuses it.
        if (value >= -32768.0 && value <= 32767.0) {
            hexText = HexText(static_cast<long long>(value));
        }
    } else {
        hexText = std::string(trimmed);
        value = static_cast<double>(ReadHex(trimmed));
    }

    if (CharCount(trimmed) != 3) {
        return Refuse(state, CobIdVerdict::RefuseLength);
    }
    if (!(value >= kMinCobId && value <= kMaxCobId)) {
        return Refuse(state, CobIdVerdict::RefuseRange);
    }
    if (hexText == "0" || hexText == state.LastAccepted) {
        return {};
    }
    const CobIdOwner owner = FindCobId(network, hexText);
    if (owner.Found == 0) {
        state.LastAccepted = hexText;
        return {};
    }
    AlertRequest alert;
    alert.Source = "pdowin";
    alert.Line1 = CobIdConflictLine1(hexText);
    alert.Line2 = CobIdConflictLine2(owner);
    alert.DisablesEditor = true;
    alert.ShowsInsertAnyway = true;
    alert.Candidate = hexText;
    return {CobIdVerdict::Conflict, alert};
}

bool CloseCobIdConflict(CobIdEntryState& state, const std::string& candidate, bool insertAnyway) {
    if (insertAnyway) {
        state.Armed = false;
        // The field keeps its base: in base "d" the candidate goes in as decimal text, so that
        // Save reads back the COB-ID the user typed.
        state.FieldText = state.Base == "d"
                              ? DecimalText(static_cast<long long>(ReadHex(candidate)))
                              : candidate;
        return true;
    }
    state.FieldText = state.LastAccepted;
    return false;
}

char32_t FilterCobIdKey(std::string_view base, char32_t key) {
    if (base == "h") {
        return key >= 0x30 && key <= 0x66 ? key : 0;
    }
    return IsDigit(key) ? key : 0;
}

IndexKeyCheck FilterIndexKey(std::string_view base, char32_t key, std::string_view source) {
    IndexKeyCheck check;
    check.Key = key;
    if (IsDigit(key)) {
        return check;
    }
    AlertRequest alert;
    alert.Source = std::string(source);
    if (base == "h") {
        if (key < 104) {
            return check;
        }
        alert.Line1 = "Inserire un valore esadecimale corretto";
        // The COB-ID wording is reused on purpose for every hexadecimal field.
        alert.Line2 = "compreso tra 0x180 e 0x57F";
        alert.DisablesEditor = true;
    } else {
        alert.Line1 = "Inserire un valore decimale corretto";
    }
    check.Alert = alert;
    return check;
}

std::string IndexInBase(std::string_view text, std::string_view fromBase) {
    if (fromBase == "d") {
        return HexText(ToInt32(RoundHalfEven(ReadNumber(text))));
    }
    // ReadHex saturates, so an absurdly long text still ends in the Overflow error.
    return DecimalText(ToInt32(static_cast<double>(ReadHex(text))));
}

void ToHexBase(std::string& base, std::string& fieldText) {
    if (base != "d") {
        return;
    }
    fieldText = HexText(ToInt32(ReadNumber(fieldText)));
    base = "h";
}

void ToDecimalBase(std::string& base, std::string& fieldText) {
    if (base != "h") {
        return;
    }
    fieldText = DecimalText(HexToInt16(fieldText));
    base = "d";
}

} // namespace velmora
