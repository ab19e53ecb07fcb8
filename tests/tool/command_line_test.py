"""The tool's command line: what it prints where, its exit status, and the bytes it writes."""
import os

from sample import AFTER, BEFORE, CONFIG, UNORDERED_CONFIG, VALUES, SampleTest, updated

QUORVEL = os.environ["QUORVEL"]
BANNER = f"Quorvel version {os.environ['VERSION']} for %s.\n"
HINT = "Use parameter help (-h) to see help on usage.\n"

LOCATIONS_CONFIG = CONFIG.replace("/missing/Info.plist:", ":missing list:.::")
LOADED = """\
Loading config from path "Quorvel.cfg"...
Locations to check: :missing list:.::Info.plist
Checking config location path ""...
Checking config location path "missing list"...
Checking config location path "."...
Checking config location path "Info.plist"...
File loaded, size: """
INSERTED = "".join(f'Searching to insert "{value}"\n' for value in VALUES.values()) + "Data updated, size: "


class CommandLine(SampleTest):
    def test_help(self):
        # The test of the documented commands compares the rest with the README.
        help_text = self.run_program(QUORVEL, "-h")[0]
        self.assertTrue(help_text.startswith(BANNER))
        for option in "-h", "-help", "--help":
            self.assertEqual(self.run_program(QUORVEL, option, "any", "-x"), (help_text, "", 0), option)

    def test_invalid_arguments(self):
        for arguments, error in [
            (["update", "-v", "-V", "-x"], 'Unknown option "V"'),
            (["-v", "update%s"], 'Unknown parameter "update%s"'),
            (["update", "-config"], 'Unknown parameter "-config"'),
            (["restore", "-"], 'Unknown parameter "-"'),
        ]:
            expected = ("", f"{BANNER}Error: {error}\n{HINT}", 1)
            self.assertEqual(self.run_program(QUORVEL, *arguments), expected, arguments)

    def test_exceptions(self):
        for thrown, line, status in [
            ("int", "Error number 0xffffffff occured.", 1),
            ("unsigned long", "Error number 0x80090020 occured.", 1),
            ("qel::Exception", "Exception: 0x6e text.", 1),
            ("mox::FileException", "Error: of files", 99),
            ("std::exception", "Exception: of the library.", 1),
            ("anything else", "Exception occured.", 1),
        ]:
            self.write_sample(config=f"Throw={thrown}")
            outcome = self.run_program(os.environ["EXCEPTION_EXIT_PROBE"])
            self.assertEqual(outcome, (f"{line}\n", "", status), thrown)

    def assert_run(self, arguments, config, plist, expected_output, expected_status, expected_plist):
        self.write_sample(config, plist)
        outcome = self.run_program(QUORVEL, *arguments)
        self.assertEqual(outcome, (expected_output, "", expected_status))
        self.assertEqual(self.read_plist(), expected_plist)
        self.assertEqual(self.modified_files(), [] if plist == expected_plist else ["Info.plist"])

    def test_updates(self):
        partial = AFTER.replace("0x0200", "0x02000")
        for case, arguments, config, before, output, after in [
            ("other bytes are kept", [], CONFIG, "\0\r\n" + BEFORE, "", "\0\r\n" + AFTER),
            ("already updated", ["update"], CONFIG, AFTER, "", AFTER),
            ("out of order", ["update"], UNORDERED_CONFIG, AFTER, "", updated(AFTER)),
            ("the first argument is the command", ["-config=none", "-v"], LOCATIONS_CONFIG, BEFORE,
             f"{LOADED}{len(BEFORE)}\n{INSERTED}{len(AFTER)}\n", AFTER),
            ("partially updated", ["update", "-v"], LOCATIONS_CONFIG, partial,
             f'{LOADED}519\nFound "ifdVendorID" at position 149\nFound "ifdFriendlyName" at position 397\n'
             f"{INSERTED}608\n", updated(partial)),
        ]:
            with self.subTest(case):
                self.assert_run(arguments, config, before, output, 0, after)

    def test_errors(self):
        for arguments, config, plist, message in [
            ([], CONFIG, BEFORE.replace("ifdProductID", "other"), "Tree[x] not found"),
            ([], CONFIG.replace("Info.plist", "none"), BEFORE, "Location not found"),
            ([], CONFIG.replace("Tree", "tree"), "", 'Empty name in "Tree"'),
            ([], CONFIG.replace("= 0x0200", "="), AFTER, 'No value for "ifdProductID"'),
            ([], "invalid", BEFORE, "FileConfig: wrong data in config file Quorvel.cfg in line 1"),
            (["update", "-config="], CONFIG, BEFORE, "FileConfig: unable to open config file "),
            (["update", "-config=a", "-config=."], CONFIG, BEFORE, "FileConfig: error reading config file ."),
            (["restore"], CONFIG, BEFORE, "Restore not implemented"),
        ]:
            with self.subTest(message):
                self.assert_run(arguments, config, plist, f"Error: {message}\n", 99, plist)
