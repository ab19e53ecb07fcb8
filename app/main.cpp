// Runs the command; maps failures to one line and an exit status.

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

void RunCommand(const CommandLine& arguments) {
    if (arguments.verbose) verboseMode = true;
    log("Loading config from path \"%s\"...", arguments.configPath.c_str());
    mox::FileConfig config(arguments.configPath, false);
    if (arguments.command == Command::Restore) {
        DoRestore(config);
    } else {
        DoUpdate(config);
    }
}

int Run(int argc, const char* const* argv) {
    const CommandLine arguments = ParseCommandLine(argc, argv);
    if (!arguments.error.empty()) {
        PrintArgumentError(arguments.error);
        return 1;
    }
    if (arguments.command == Command::Help) {
        PrintHelp();
    } else {
        RunCommand(arguments);
    }
    return 0;
}

}  // namespace

int main(int argc, char* argv[]) {
    // Derived before base: both libraries' exceptions derive from std::exception.
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
