#include "cli/arguments.h"

#include <array>
#include <charconv>
#include <string_view>

namespace vantoro::cli {

namespace {

using namespace std::string_view_literals;

struct CommandRow {
    std::string_view name;
    Command command;
    std::string_view options; // those it knows, between blanks
};
constexpr std::string_view kOpening = " --password-file --password-fd --max-dictionary ";
constexpr auto kCommands = std::to_array<CommandRow>({
    {"list", Command::List, " --json --sha256 --password-file --password-fd --encoding --max-dictionary "},
    {"extract", Command::Extract,
     " -o --folder --password-file --password-fd --encoding --only --keep-broken --quiet "
     "--max-dictionary "},
    {"test", Command::Test, kOpening},
    {"create", Command::Create,
     " -o --kind --level --password-file --password-fd --encrypt-names --classic-encryption --exclude --threads "
     "--reproducible --quiet "},
    {"formats", Command::Formats, " --json "},
});

/// Walks the words and fills the arguments; the first mistake ends it.
class Parser {
public:
    explicit Parser(const std::vector<std::string>& words) : m_words(words) {}

    Parsed run()
    {
        parse();
        if (!m_mistake.empty())
            return {std::nullopt, m_mistake};
        return {m_arguments, {}};
    }

private:
    void parse()
    {
        if (m_words.empty())
            return fail("a command is needed");
        const auto& first = m_words[0];
        if (first == "--help" || first == "-h" || first == "help")
            return;
        if (first == "--version") {
            m_arguments.command = Command::Version;
            return;
        }
        for (const auto& row : kCommands) {
            if (row.name == first)
                m_row = &row;
        }
        if (!m_row)
            return fail("there is no command \"" + first + "\"");
        m_arguments.command = m_row->command;
        for (m_at = 1; m_at < m_words.size() && m_mistake.empty(); ++m_at)
            parseWord(m_words[m_at]);
        checkWhole();
    }

    void parseWord(const std::string& word)
    {
        if (m_onlyNames || word.size() < 2 || word[0] != '-') {
            m_arguments.archives.push_back(word);
            return;
        }
        if (word == "--") {
            m_onlyNames = true;
            return;
        }
        if (word == "--help" || word == "-h") {
            m_arguments.helpFor = m_row->command;
            m_arguments.command = Command::Help;
            return;
        }
        const auto equals = word.starts_with("--") ? word.find('=') : std::string::npos;
        m_value = equals == std::string::npos ? std::nullopt : std::optional(word.substr(equals + 1));
        const auto name = word.substr(0, equals);
        if (m_row->options.find(" " + name + " ") == std::string_view::npos)
            return fail("\"" + std::string(m_row->name) + "\" has no option \"" + name + "\"");
        parseOption(name);
    }

    void parseOption(const std::string& name)
    {
        if (name == "--json")
            m_arguments.json = true;
        else if (name == "--sha256")
            m_arguments.sha256 = true;
        else if (name == "--keep-broken")
            m_arguments.keepBroken = true;
        else if (name == "--quiet")
            m_arguments.quiet = true;
        else if (name == "--encrypt-names")
            m_arguments.encryptNames = true;
        else if (name == "--classic-encryption")
            m_arguments.classicEncryption = true;
        else if (name == "--reproducible")
            m_arguments.reproducible = true;
        else
            parseOptionWithValue(name, value(name));
    }

    void parseOptionWithValue(const std::string& name, const std::string& text)
    {
        if (!m_mistake.empty())
            return;
        if (name == "-o")
            m_arguments.destination = text;
        else if (name == "--only")
            m_arguments.only.push_back(text);
        else if (name == "--password-file")
            m_arguments.passwordFile = text;
        else if (name == "--password-fd")
            parseDescriptor(text);
        else if (name == "--folder")
            parseFolder(text);
        else if (name == "--encoding")
            parseEncoding(text);
        else if (name == "--kind")
            m_arguments.kind = text;
        else if (name == "--exclude")
            m_arguments.exclude.push_back(text);
        else if (name == "--level")
            m_arguments.level = parseNumber(name, text, 0, 9);
        else if (name == "--max-dictionary")
            m_arguments.maxDictionary = parseNumber(name, text, 1, 64 << 10);
        else if (name == "--threads")
            m_arguments.threads = parseNumber(name, text, 1, 256);
    }

    unsigned parseNumber(const std::string& name, const std::string& text, unsigned least, unsigned most)
    {
        unsigned number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc{} || end != text.data() + text.size() || number < least || number > most)
            fail(name + " wants a number from " + std::to_string(least) + " to " + std::to_string(most));
        return number;
    }

    void parseDescriptor(const std::string& text)
    {
        int number = -1;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc{} || end != text.data() + text.size() || number < 0)
            return fail("--password-fd wants the number of an open descriptor, not \"" + text + "\"");
        m_arguments.passwordFd = number;
    }

    void parseFolder(const std::string& text)
    {
        if (text != "auto" && text != "always" && text != "never")
            return fail("--folder is auto, always or never, not \"" + text + "\"");
        m_arguments.folder = text;
    }

    void parseEncoding(const std::string& text)
    {
        const auto* charset = findCharset(std::string_view(text));
        if (!charset)
            return fail("there is no encoding \"" + text + "\"");
        m_arguments.charset = charset->id;
    }

    std::string value(const std::string& name)
    {
        if (m_value)
            return *m_value;
        if (m_at + 1 < m_words.size())
            return m_words[++m_at];
        fail(name + " wants a value");
        return {};
    }

    void checkWhole()
    {
        const auto count = m_arguments.archives.size();
        if (!m_mistake.empty() || m_arguments.command == Command::Help)
            return;
        if (m_arguments.command == Command::Formats)
            return count == 0 ? void() : fail("\"formats\" takes no archive");
        if (count == 0)
            return fail("\"" + std::string(m_row->name) + "\" wants "
                        + (m_arguments.command == Command::Create ? "files or folders" : "an archive"));
        if (m_arguments.command == Command::Create && m_arguments.destination.empty())
            return fail("\"create\" wants -o ARCHIVE");
        if (m_arguments.command == Command::List && count > 1)
            return fail("\"list\" takes one archive");
        if (m_arguments.passwordFile && m_arguments.passwordFd)
            return fail("--password-file and --password-fd exclude each other");
        if (m_arguments.sha256 && !m_arguments.json)
            return fail("--sha256 goes with --json");
    }

    void fail(std::string mistake) { m_mistake = std::move(mistake); }

    const std::vector<std::string>& m_words;
    std::size_t m_at = 0;
    const CommandRow* m_row = nullptr;
    std::optional<std::string> m_value; // of --name=value
    bool m_onlyNames = false;
    Arguments m_arguments;
    std::string m_mistake;
};

}

Parsed parseArguments(const std::vector<std::string>& words) { return Parser(words).run(); }

std::string helpText(Command command)
{
    switch (command) {
    case Command::List:
        return R"(usage: vantoro-cli list [--json] [--sha256] [--password-file F | --password-fd N] [--encoding NAME] ARCHIVE

Lists the entries of an archive. Nothing is written to disk.

  --json             one JSON object a line: index name kind size packed mtime mode link encrypted method crc
  --sha256           with --json: adds the SHA-256 of the decoded data
  --password-file F  takes the password from the first line of file F
  --password-fd N    takes it from the open descriptor N
  --encoding NAME    charset of names that do not declare one: CP866, Shift_JIS, … (default: detected)
  --max-dictionary N MiB of memory that decoding may ask for (default: 1024)
)";
    case Command::Extract:
        return R"(usage: vantoro-cli extract [-o DIR] [--folder auto|always|never] [--password-file F | --password-fd N]
                           [--encoding NAME] [--only NAME]... [--keep-broken] [--quiet] ARCHIVE...

Extracts archives. Nothing that exists is overwritten: a taken name gets a number.

  -o DIR             destination, an existing folder (default: beside each archive)
  --folder MODE      an enclosing folder: auto (only for more than one top item; default), always, never
  --only NAME        extracts only this entry, or everything below this folder; may be repeated
  --keep-broken      keeps damaged entries as NAME.damaged
  --quiet            no progress and no result line
  --password-file F  takes the password from the first line of file F
  --password-fd N    takes it from the open descriptor N
  --encoding NAME    charset of names that do not declare one (default: detected)
  --max-dictionary N MiB of memory that decoding may ask for (default: 1024)
)";
    case Command::Test:
        return R"(usage: vantoro-cli test [--password-file F | --password-fd N] [--max-dictionary N] ARCHIVE...

Decodes everything, writes nothing, and tells what is damaged.

  --password-file F  takes the password from the first line of file F
  --password-fd N    takes it from the open descriptor N
  --max-dictionary N MiB of memory that decoding may ask for (default: 1024)
)";
    case Command::Create:
        return R"(usage: vantoro-cli create -o OUT [--kind K] [--level 0-9] [--password-file F | --password-fd N]
                          [--encrypt-names] [--exclude GLOB]... [--threads N] [--reproducible] PATH...

Writes a new archive of files and folders. What stands at OUT stays until the new archive is complete.

  -o OUT                the archive; its name decides the kind
  --kind K              zip, 7z, tar.gz, tar.xz, tar.zst, tar.bz2, tar, ... whatever OUT is called
  --level N             0 (fast) to 9 (small)
  --password-file F     encrypts (zip: AES-256, 7z) with the first line of file F
  --password-fd N       or with what comes from the open descriptor N
  --encrypt-names       7z: the list of names as well
  --classic-encryption  zip: the old, weak cipher, for programs that know no other
  --exclude GLOB        leaves out what matches, by path in the archive or by name; may be repeated
  --threads N           threads that compress (default: as many as processors)
  --reproducible        identical input gives an identical archive: sorted, fixed times, no owners
  --quiet               no progress and no result line
)";
    case Command::Formats:
        return R"(usage: vantoro-cli formats [--json]

Lists the formats that can be read, with their file-name extensions.
)";
    default:
        return R"(usage: vantoro-cli COMMAND ...

  list     shows what is in an archive
  extract  unpacks archives
  test     checks archives without writing anything
  create   writes a new archive
  formats  lists the formats that can be read

vantoro-cli COMMAND --help tells more. Exit status: 0 whole, 1 entries refused or damaged, 2 failed, nothing kept,
3 a question (password, size, encoding) could not be asked or was answered in vain, 4 wrong usage.
)";
    }
}

}
