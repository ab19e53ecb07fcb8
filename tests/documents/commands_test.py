"""The commands shown in the README, the guides and the manual pages print what is shown there.

Commands follow "$ " in console blocks; the lines after each are its expected output. The commands of a
document run in order in a copy of examples/.
"""
import re
import shutil

from sample import ROOT, SampleTest

DOCUMENTS = [ROOT / "README.md", *sorted(ROOT.glob("docs/*.md")), *sorted(ROOT.glob("docs/man/*.[15]"))]
MARKDOWN_BLOCK = re.compile(r"^```console\n(.*?)^```$", re.M | re.S)
MANUAL_BLOCK = re.compile(r"^\.Bd -literal[^\n]*\n(\$ .*?)^\.Ed$", re.M | re.S)
COMMAND = re.compile(r"^\$ (.*)$", re.M)
COMMAND_ANYWHERE = re.compile(r"^(?:\.Dl)?\s*\$ (.*)$", re.M)


class DocumentedCommands(SampleTest):
    def replay(self, transcript):
        """Returns the transcript with what its commands print now."""
        shutil.copytree(ROOT / "examples", self.directory, dirs_exist_ok=True)
        return "".join(f"$ {command}\n" + self.run_program("bash", "-c", f"exec 2>&1; {command}")[0]
                       for command in COMMAND.findall(transcript))

    def test_output(self):
        for path in DOCUMENTS:
            with self.subTest(path.name):
                self.setUp()
                document = path.read_text()
                block = MARKDOWN_BLOCK if path.suffix == ".md" else MANUAL_BLOCK
                transcript = "".join(block.findall(document))
                self.assertEqual(COMMAND.findall(transcript), COMMAND_ANYWHERE.findall(document),
                                 "commands outside console blocks")
                self.assertMultiLineEqual(transcript, self.replay(transcript))
