#include "utility/file.h"

#include <sys/socket.h>
#include <sys/un.h>

#include "tests/support/scratch_test.h"

namespace {

using FileTest = ScratchTest;
enum Kind { Nothing, File, Directory };
using Row = std::pair<std::string, Kind>;

TEST_F(FileTest, ExistenceFollowsLinksAndTheDirectoryBit) {
    std::filesystem::create_symlink(Write("file", ""), Path("link"));
    std::filesystem::create_symlink(folder, Path("folder link"));
    std::filesystem::create_symlink("missing", Path("dangling"));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    Path("socket").copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
    for (const auto& [path, kind] :
         {Row{Path("file"), File}, Row{Path("link"), File}, Row{folder, Directory},
          Row{Path("folder link"), Directory}, Row{Path("socket"), Directory},
          Row{Path("dangling"), Nothing}, Row{Path("file "), Nothing}, Row{"", Nothing},
          Row{"/dev/null", File}}) {
        EXPECT_EQ(mox::File::IsFileExist(path.c_str()), kind == File) << path;
        EXPECT_EQ(mox::File::IsDirectoryExist(path.c_str()), kind == Directory) << path;
    }
}

}  // namespace
