
#include "arguments.h"
#include "commands.h"
#include "engine.h"
#include "exit_status.h"
#include "filetools/hex_dump.h"
#include "output.h"

namespace vantrel::cli {

namespace {

constexpr std::string_view kHexDumpNotes =
    "A line is the offset, sixteen bytes in hexadecimal, and those of them that are printable.\n"
    "N is decimal, or hexadecimal as 0x1F.\n"
    "\n"
    "Exit status: 0, or 2 when the file cannot be read to its end.\n";

struct Stretch {
    std::uint64_t offset = 0;
    std::uint64_t length = UINT64_MAX;
};

int Dump(std::string_view operand, const Stretch& stretch) {
    Engine engine{std::string()};
    BytesOfFile file;
    if (const Error error = file.Open(engine.Tools().files, engine.FullPath(operand)); !error.IsOk()) {
        engine.Messages().Say(error.Description());
        return kTrouble;
    }
    Output out;
    int failure = 0;
    try {
        WriteHexDump(file, stretch.offset, stretch.length, "\n", engine.Tools().loop,
                     [&](std::string_view piece) {
                         out << piece;
                         // Nobody reads on: the rest need not be made.
                         if (failure = out.Finish(); failure != 0) throw Cancelled();
                     });
    } catch (const ErrorException& error) {
        engine.Messages().Say(error.Get().Description());
        return kTrouble;
    } catch (const Cancelled&) {
        engine.Messages().Say("cannot write the result: " + GetErrorText(failure));
        return kTrouble;
    }
    return 0;
}

}  // namespace

int RunHexdump(const std::vector<std::string_view>& arguments) {
    Stretch stretch;
    const auto take = [](std::uint64_t& to) {
        return [&to](std::string_view text) {
            const std::optional<std::uint64_t> number = OffsetFromText(text);
            if (number) to = *number;
            return number.has_value();
        };
    };
    const CommandSpec command{"hexdump",
                              "FILE",
                              "Prints the bytes of a file.",
                              kHexDumpNotes,
                              {{"--offset", "N", "begin at this byte (0)", take(stretch.offset)},
                               {"--length", "N", "print so many bytes (to the end)", take(stretch.length)}}};
    const ParsedArguments parsed = ParseArguments(command, arguments, 1);
    if (const std::optional<int> status = AnsweredAtOnce(command, parsed)) return *status;
    return Dump(parsed.operands[0], stretch);
}

}  // namespace vantrel::cli
