#include "platform/XADException.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace vantoro {
namespace {

struct CodeRow {
    ErrorCode error;
    int code;
};
/// Kept in logs and compared by the application: append only.
constexpr std::array kCodes{
    CodeRow{ErrorCode::Internal, 1},
    CodeRow{ErrorCode::Io, 2},
    CodeRow{ErrorCode::WriteFailed, 3},
    CodeRow{ErrorCode::NotAnArchive, 4},
    CodeRow{ErrorCode::OutOfMemory, 5},
    CodeRow{ErrorCode::Corrupt, 6},
    CodeRow{ErrorCode::Truncated, 7},
    CodeRow{ErrorCode::ChecksumMismatch, 8},
    CodeRow{ErrorCode::SizeMismatch, 9},
    CodeRow{ErrorCode::UnsupportedMethod, 10},
    CodeRow{ErrorCode::UnsupportedEncryption, 11},
    CodeRow{ErrorCode::UnsupportedFeature, 12},
    CodeRow{ErrorCode::Cancelled, XADException::kBreak},
    CodeRow{ErrorCode::PasswordNeeded, 14},
    CodeRow{ErrorCode::WrongPassword, 15},
    CodeRow{ErrorCode::MissingVolume, 16},
    CodeRow{ErrorCode::LimitExceeded, 17},
    CodeRow{ErrorCode::DecoderStopped, 18},
    CodeRow{ErrorCode::Stalled, 19},
    CodeRow{ErrorCode::OverlappingEntries, 20},
    CodeRow{ErrorCode::UnsafeName, 21},
    CodeRow{ErrorCode::UnsafeLink, 22},
    CodeRow{ErrorCode::UnsupportedKind, 23},
    CodeRow{ErrorCode::EntryRefused, 24},
    CodeRow{ErrorCode::AlreadyExists, 25},
    CodeRow{ErrorCode::NoSpace, 26},
    CodeRow{ErrorCode::NotWritable, 27},
    CodeRow{ErrorCode::DestinationGone, 28},
    CodeRow{ErrorCode::BombRefused, 29},
    CodeRow{ErrorCode::EncodingNeeded, 30},
    CodeRow{ErrorCode::SourceUnreadable, 31},
    CodeRow{ErrorCode::UnsupportedKindOfArchive, 32},
    CodeRow{ErrorCode::TrailingData, 33},
    CodeRow{ErrorCode::ProgramReplaced, 34},
};

}

int XADException::codeForError(const Error& error)
{
    const auto* row = std::ranges::find(kCodes, error.code, &CodeRow::error);
    return row == kCodes.end() ? 1 : row->code;
}

QString XADException::describeXADError(int code)
{
    if (code == 0)
        return {};
    const auto* row = std::ranges::find(kCodes, code, &CodeRow::code);
    return QCoreApplication::translate("XADException",
                                       describe(row == kCodes.end() ? ErrorCode::Internal : row->error));
}

}
