// From the arguments to a command, to one line and an exit status.

#include <cstdio>
#include <cstdlib>
#include <exception>

#include "app/command_line.h"
#include "app/log.h"
#include "app/process.h"
#include "app/restore.h"
#include "app/update.h"
#include "app/usage.h"
#include "core/exception.h"
#include "utility/exception.h"
#include "utility/file_config.h"

namespace {

void RunCommand(const CommandLine& line) {
    if (line.verbose) verboseMode = true;
    log("Loading config from path \"%s\"...", line.configPath.c_str());
    mox::FileConfig config(line.configPath, false);
    if (line.command == Command::Restore) {
        DoRestore(config);
    } else {
        DoUpdate(config);
    }
}

int Run(int argc, const char* const* argv) {
    const CommandLine line = ParseCommandLine(argc, argv);
    if (!line.error.empty()) {
        PrintArgumentError(line.error);
        return 1;
    }
    if (line.command == Command::Help) {
        PrintHelp();
    } else {
        RunCommand(line);
    }
    return 0;
}

}  // namespace

int main(int argc, char* argv[]) {
    // From the particular to the general: both libraries' exceptions are also std::exceptions.
    try {
        PrepareProcess();
        return Run(argc, argv);
    } catch (int number) {
        std::printf("Error number 0x%x occured.\n", static_cast<unsigned int>(number));
    } catch (unsigned long number) {
        std::printf("Error number 0x%lx occured.\n", number);
    } catch (const qel::Exception& exception) {
        std::printf("Exception: 0x%lx %s.\n", exception.code, exception.what());
    } catch (const mox::Exception& exception) {
        std::printf("Error: %s\n", exception.what());
        std::exit(99);
    } catch (const std::exception& exception) {
        std::printf("Exception: %s.\n", exception.what());
    } catch (...) {
        std::puts("Exception occured.");
    }
    return 1;
}
