#include "cli/commands.h"
#include "cli/output.h"

#include "engine/open.h"

#include <cstdlib>

namespace vantoro::cli {

int runFormats(const Arguments& arguments)
{
    Output out;
    for (const auto& format : supportedFormats()) {
        if (!arguments.json) {
            out.put(format.id + std::string(format.id.size() < 12 ? 12 - format.id.size() : 1, ' ') + format.displayName
                    + ":");
            for (const auto& extension : format.extensions)
                out.put(" " + extension);
            out.put("\n");
            continue;
        }
        out.put("{\"id\":");
        out.putJson(format.id);
        out.put(",\"name\":");
        out.putJson(format.displayName);
        out.put(",\"extensions\":[");
        for (std::size_t i = 0; i < format.extensions.size(); ++i) {
            out.put(i > 0 ? "," : "");
            out.putJson(format.extensions[i]);
        }
        out.put("]}\n");
    }
    return out.flush() ? kWhole : kFailed;
}

namespace {

int run(const Arguments& arguments)
{
    const auto cancel = cancelOnSignals();
    switch (arguments.command) {
    case Command::List:
        return runList(arguments, cancel);
    case Command::Extract:
        return runExtract(arguments, cancel);
    case Command::Test:
        return runTest(arguments, cancel);
    case Command::Create:
        return runCreate(arguments, cancel);
    case Command::Formats:
        return runFormats(arguments);
    case Command::Version:
        Output().put("vantoro-cli " VANTORO_VERSION "\n" + describeDecoders() + "\n");
        return kWhole;
    case Command::Help:
        Output().put(helpText(arguments.helpFor));
        return kWhole;
    }
    return kWrongUsage;
}

}

}

int main(int argc, char** argv)
{
    using namespace vantoro::cli;
    // What is the rule without it, too, but mktime() would look at the zone's file for every entry.
    ::setenv("TZ", ":/etc/localtime", 0);
    vantoro::leaveDecodersBehind();
    const auto parsed = parseArguments({argv + 1, argv + argc});
    if (!parsed.arguments) {
        complain({}, {}, parsed.mistake + " (vantoro-cli --help)");
        return kWrongUsage;
    }
    return statusAfterSignals(run(*parsed.arguments));
}
