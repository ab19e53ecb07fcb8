"""quorvel-check, run as a user would: what it says, and that it leaves everything as it was."""
import os

from scratch import AFTER, BEFORE, CONFIG, ScratchRun

CHECK = os.path.join(os.path.dirname(os.environ["QUORVEL"]), "quorvel-check")
DIFFERENCE = "--- Info.plist\n+++ Info.plist, updated\n@@ -1,16 +1,19 @@\n" + "".join(
    " +"[line not in BEFORE] + line for line in AFTER.splitlines(True)[:-1])
ORDER = 'The names in "Tree" are not in the order of their arrays: each update would add the values again.'


class Check(ScratchRun):
    def test_answers(self):
        rows = [
            (CONFIG, BEFORE, (DIFFERENCE, "", 1)),
            (CONFIG.rstrip("\n"), AFTER, ("Info.plist is current\n", "", 0)),
            (CONFIG.replace(".:", ".:'odd\" list:"), AFTER, ("'odd\" list is current\n", "", 0)),
            (CONFIG.replace("vendorIDs:productIDs", "productIDs:vendorIDs"), BEFORE, ("", ORDER, 2)),
            (CONFIG, BEFORE.replace("readerNames", "names"), ("", "Error: Tree[x] not found", 2)),
            (CONFIG.replace("::Info.plist\n", "\n"), BEFORE, ("", "Error: Location not found", 2)),
            (CONFIG + "x", BEFORE,
             ("", "Error: FileConfig: wrong data in config file Quorvel.cfg in line 6", 2)),
            (CONFIG, BEFORE, ("", "usage: quorvel-check CONFIG", 2), "Quorvel.cfg", "-v"),
            (CONFIG, BEFORE, ("usage: quorvel-check CONFIG\n", "", 0), "--help"),
        ]
        (self.folder / "'odd\" list").symlink_to("Info.plist")
        (scratch := self.folder / "a # b : c").mkdir()  # whose path no configuration could hold
        for config, before, expected, *arguments in rows:
            self.write_files(before, config)
            output, errors, status = self.run_tool(*arguments or ["Quorvel.cfg"], executable=CHECK,
                                                   env=dict(os.environ, TMPDIR=str(scratch)))
            self.assertEqual((output, errors.rstrip("\n"), status), expected)
            written = {path.name for path in self.folder.iterdir() if path.stat().st_mtime_ns != 1}
            self.assertEqual((written, [*scratch.iterdir()]), ({scratch.name}, []), config)
