#pragma once

#include "engine/text/charset.h"

#include <optional>
#include <string>
#include <vector>

namespace vantoro::cli {

enum class Command { List, Extract, Test, Create, Formats, Version, Help };

/// Exit statuses: a contract that scripts rely on.
enum Status : int {
    kWhole = 0, ///< everything came out as stored
    kDamaged = 1, ///< finished, but entries were refused or damaged
    kFailed = 2, ///< nothing kept
    kUnanswered = 3, ///< a question could not be asked or was answered in vain
    kWrongUsage = 4,
};

struct Arguments {
    Command command = Command::Help;
    Command helpFor = Command::Help;
    std::vector<std::string> archives;
    std::string destination; ///< empty: beside the archive
    std::string folder = "auto";
    std::optional<std::string> passwordFile;
    std::optional<int> passwordFd;
    CharsetId charset = kCharsetUnknown;
    unsigned maxDictionary = 1024; ///< MiB of history that a decoder may hold
    std::vector<std::string> only;
    bool json = false;
    bool sha256 = false;
    bool keepBroken = false;
    bool quiet = false;
    std::string kind; ///< of create; empty: by the output's name
    std::optional<unsigned> level;
    unsigned threads = 0;
    std::vector<std::string> exclude;
    bool encryptNames = false;
    bool classicEncryption = false;
    bool reproducible = false;
};

struct Parsed {
    std::optional<Arguments> arguments;
    std::string mistake; ///< why there are none
};
Parsed parseArguments(const std::vector<std::string>& words);

/// Help text of a command; of the program for Command::Help.
std::string helpText(Command command);

}
