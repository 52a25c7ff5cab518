#pragma once

// Typing and checking a COB-ID in an editor field. The field shows the COB-ID in base "h"
// (hexadecimal digits, no prefix) or "d" (decimal); these rules filter its keys, switch its
// base and validate it on leaving the field and before saving. The editor keeps its state in
// a CobIdEntryState; the rules read and update it and say what the alert must show.

#include "pdo/alert.h"

#include <optional>
#include <string>
#include <string_view>

namespace velmora {

struct Network;

// The PDO editor's state that the COB-ID check reads.
struct CobIdEntryState {
    std::string FieldText;
    std::string Base = "h"; // "h" or "d"
    // The last accepted COB-ID text: the PDO's own when the editor is filled, its
    // DefaultCobId after a reset to "Non configurato".
    std::string LastAccepted;
    bool Loading = false; // true while the editor fills its fields
    bool CobIdSwitch = false;
    std::string Mode;   // the mode text the editor holds
    bool Armed = false; // setCobChecked arms the check, unSetCobChecked disarms it
};

enum class CobIdVerdict {
    Accept,
    RefuseLength, // not exactly three characters
    RefuseRange,  // outside 0x180..0x57F
    Conflict,     // another PDO uses it
};

struct CobIdCheck {
    CobIdVerdict Verdict = CobIdVerdict::Accept;
    std::optional<AlertRequest> Alert; // set for every verdict but Accept

    bool Passed() const { return Verdict == CobIdVerdict::Accept; }
};

// Validates the field (CheckCobIdEntry). A disarmed check only arms itself and passes.
// Nothing is tested unless the COB-ID switch is on, the mode is neither unconfigured (either
// spelling) nor "Disabilitato", the field differs from the last accepted text and the editor
// is not loading. The trimmed field must then be exactly three characters long, in either
// base (so decimal 1000..1407 is refused although in range), and its value within
// 0x180..0x57F; a refusal puts the last accepted text back into the field. A value that
// passes is searched in the network (unless it is "0" or already the last accepted text):
// a PDO using it is a conflict that offers "Inserisci comunque il Cob-Id", otherwise its
// hexadecimal text becomes the last accepted one.
CobIdCheck CheckCobIdEntry(const Network& network, CobIdEntryState& state);

// The conflict alert closed with its button. With insertAnyway the check is disarmed, the
// candidate (hexadecimal text) is written into the field in the field's base (as decimal
// text in base "d") and the result is true: the editor runs its Save command at once, whose
// own check then only re-arms and passes, so the duplicate is stored on purpose. Without it
// the field goes back to the last accepted text and the result is false.
bool CloseCobIdConflict(CobIdEntryState& state, const std::string& candidate, bool insertAnyway);

// The key filter of the COB-ID field, for every typed character: in base "h" a character
// whose code lies in 0x30..0x66 is kept (digits, "A".."Z", "a".."f" and the signs between
// them), in any other base only a digit. Anything else, Backspace included, is discarded
// and the result is 0: a COB-ID is corrected by selecting and retyping, or with Delete.
char32_t FilterCobIdKey(std::string_view base, char32_t key);

struct IndexKeyCheck {
    char32_t Key = 0; // the key, always kept
    std::optional<AlertRequest> Alert;
};

// The mapping and parameter editors' variant: the key is kept, but in base "h" a non-digit
// whose code is 104 ("h") or more raises "Inserire un valore esadecimale corretto" /
// "compreso tra 0x180 e 0x57F" and disables the PDO editor dialog, and in any other base a
// non-digit raises "Inserire un valore decimale corretto" with no second line. source names
// the editor that shows the alert ("mapping", "parametri").
IndexKeyCheck FilterIndexKey(std::string_view base, char32_t key, std::string_view source);

// The Index field of the mapping and parameter editors in the other base: the decimal digits
// of a text in base "h" (read as hexadecimal), the upper-case hexadecimal digits of a text in
// base "d" (read as a decimal number, rounded half-even). Values outside 32 bits are the
// Overflow error, so "A000" gives "40960" and back.
std::string IndexInBase(std::string_view text, std::string_view fromBase);

// Base switching of a COB-ID field. ToHexBase acts only in base "d": the field's decimal value
// (a value outside 32 bits is the Overflow error) is shown as hexadecimal digits and the
// base becomes "h". ToDecimalBase acts only in base "h": the text read as hexadecimal must
// fit a 16-bit signed number (else the Overflow error) and is shown in decimal, base "d".
void ToHexBase(std::string& base, std::string& fieldText);
void ToDecimalBase(std::string& base, std::string& fieldText);

} // namespace velmora
