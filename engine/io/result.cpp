#include "engine/io/result.h"

namespace vantoro {

const char* describe(ErrorCode code)
{
    switch (code) {
    case ErrorCode::Internal:
        return "an internal error occurred";
    case ErrorCode::Cancelled:
        return "stopped by the user";
    case ErrorCode::Io:
        return "reading the archive failed";
    case ErrorCode::NotAnArchive:
        return "this is not an archive of a known format";
    case ErrorCode::Truncated:
        return "the archive ends too early";
    case ErrorCode::Corrupt:
        return "the archive is damaged";
    case ErrorCode::ChecksumMismatch:
        return "the data are damaged (wrong checksum)";
    case ErrorCode::SizeMismatch:
        return "the data are damaged (wrong size)";
    case ErrorCode::UnsupportedMethod:
        return "the compression method is not supported";
    case ErrorCode::UnsupportedEncryption:
        return "the kind of encryption is not supported";
    case ErrorCode::UnsupportedFeature:
        return "the archive uses a feature that is not supported";
    case ErrorCode::PasswordNeeded:
        return "a password is needed";
    case ErrorCode::WrongPassword:
        return "the password is wrong, or the data are damaged";
    case ErrorCode::MissingVolume:
        return "a part of the archive is missing";
    case ErrorCode::LimitExceeded:
        return "the archive asks for more than is allowed";
    case ErrorCode::OutOfMemory:
        return "there is not enough memory";
    case ErrorCode::DecoderStopped:
        return "the reader for this format stopped unexpectedly";
    case ErrorCode::Stalled:
        return "the reader for this format does not get on";
    case ErrorCode::OverlappingEntries:
        return "entries of the archive overlap, as in a forged archive";
    case ErrorCode::UnsafeName:
        return "the name is not safe";
    case ErrorCode::UnsafeLink:
        return "the link leads out of the destination folder";
    case ErrorCode::UnsupportedKind:
        return "devices, pipes and sockets are not created";
    case ErrorCode::EntryRefused:
        return "the entry was refused";
    case ErrorCode::AlreadyExists:
        return "the name is already taken";
    case ErrorCode::NoSpace:
        return "the disk is full";
    case ErrorCode::WriteFailed:
        return "writing failed";
    case ErrorCode::NotWritable:
        return "the destination folder cannot be written to";
    case ErrorCode::DestinationGone:
        return "the destination folder has vanished";
    case ErrorCode::BombRefused:
        return "the archive would grow out of proportion";
    case ErrorCode::EncodingNeeded:
        return "the encoding of the file names is not known";
    case ErrorCode::SourceUnreadable:
        return "the file cannot be read";
    case ErrorCode::UnsupportedKindOfArchive:
        return "archives of this kind cannot be created";
    case ErrorCode::TrailingData:
        return "something unknown follows the end of the compressed data";
    case ErrorCode::ProgramReplaced:
        return "the program was updated while it runs; please start it again";
    }
    return "an unknown error occurred";
}

}
