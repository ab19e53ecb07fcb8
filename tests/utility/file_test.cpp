#include "utility/file.h"

#include <sys/socket.h>
#include <sys/un.h>

#include "tests/support/scratch_test.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using namespace mox::File;
using FileTest = ScratchTest;

TEST_F(FileTest, ExistenceFollowsLinksAndTheDirectoryBit) {
    enum Kind { Nothing, File, Folder };
    using Entry = std::pair<const char*, Kind>;
    Write("file", "");
    fs::create_symlink("file", "link");
    fs::create_symlink(".", "up");
    fs::create_symlink("none", "dead");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    "socket"s.copy(address.sun_path, sizeof address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
    for (const auto& [path, kind] :
         {Entry{"file", File}, Entry{"link", File}, Entry{"/dev/null", File}, Entry{".", Folder},
          Entry{"up", Folder}, Entry{"socket", Folder}, Entry{"dead", Nothing},
          Entry{"file ", Nothing}, Entry{"", Nothing}}) {
        EXPECT_EQ(IsFileExist(path) * File + IsDirectoryExist(path) * Folder, kind) << path;
    }
}

}  // namespace
