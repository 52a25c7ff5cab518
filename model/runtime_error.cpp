#include "model/runtime_error.h"

namespace velmora {

namespace {

std::string Compose(ErrorCode code, const std::string& detail) {
    std::string text = RuntimeError::Describe(code);
    if (!detail.empty()) {
        text += ": ";
        text += detail;
    }
    return text;
}

} // namespace

RuntimeError::RuntimeError(ErrorCode code, const std::string& detail)
    : std::runtime_error(Compose(code, detail)), code_(code), detail_(detail) {}

const char* RuntimeError::Describe(ErrorCode code) noexcept {
    switch (code) {
    case ErrorCode::SubscriptOutOfRange:
        return "Indice non compreso nell'intervallo";
    case ErrorCode::Overflow:
        return "Overflow";
    case ErrorCode::FileNotFound:
        return "Impossibile trovare il file";
    case ErrorCode::PathFileAccess:
        return "Errore di accesso al percorso/file";
    case ErrorCode::BadRecordLength:
        return "Lunghezza record non valida";
    case ErrorCode::InvalidArgument:
        return "Chiamata di routine o argomento non validi";
    case ErrorCode::TypeMismatch:
        return "Tipo non corrispondente";
    case ErrorCode::UnsupportedFormat:
        return "Formato del file non supportato";
    }
    return "Errore";
}

} // namespace velmora
