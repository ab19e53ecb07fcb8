"""The Ansible role on fifty simulated hosts, which are directories on this machine."""
import json
import os
import pathlib

from sample import AFTER, BEFORE, ROOT, VALUES, SampleTest

PLAYBOOK = ROOT / "examples/ansible/playbook.yml"
HOSTS = [f"desk-{number:02}" for number in range(1, 51)]

ENTRIES = [{"key": key, "value": value} for key, value in VALUES.items()]
UNORDERED = 'The names in "Tree" are not in the order of their arrays: each update would add the values again.'

# The events of a host: a task, and "changed" or its error.
INSTALLED = ("Install the configuration", "changed")
PREDICTED = ("Predict the update", "changed")
UPDATED = ("Update the property list", "changed")
RESTARTED = ("Restart the smart-card service", "changed")
REFUSED = ("Predict the update", 2)


class AnsibleRole(SampleTest):
    def setUp(self):
        super().setUp()
        # The role has to quote and escape these names.
        self.hosts, self.bin = self.directory / "hosts #1", self.directory / "the tool"
        self.temporary = self.directory / "temporary"
        self.hosts.mkdir()
        self.temporary.mkdir()
        self.bin.symlink_to(pathlib.Path(os.environ["QUORVEL"]).parent)

    def write_hosts(self, plists, variables={}):
        """Makes a host of each property list; variables has additional variables per host."""
        directory = f"{self.hosts}/{{{{ inventory_hostname }}}}"
        common = {
            "ansible_connection": "local", "ansible_become": False,
            "ansible_python_interpreter": "{{ ansible_playbook_python }}",
            "quorvel_bin": str(self.bin), "quorvel_config": f"{directory}/Quorvel.cfg", "quorvel_restart": "true",
            "quorvel_candidates": [f"{directory}/missing/Info.plist", f"{directory}/Info.plist"],
            "quorvel_entries": ENTRIES,
        }
        inventory = {"all": {"hosts": {host: variables.get(host, {}) for host in plists}, "vars": common}}
        (self.directory / "inventory.yml").write_text(json.dumps(inventory))  # JSON is YAML.
        for host, plist in plists.items():
            (self.hosts / host).mkdir()
            (self.hosts / host / "Info.plist").write_text(plist)
            # An error in the installed configuration must not affect the prediction for the new one.
            (self.hosts / host / "Quorvel.cfg").write_text("invalid")

    def play(self, *options):
        """Runs the playbook; returns its exit status and the events of each host."""
        environment = {
            "PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "PYTHONDONTWRITEBYTECODE": "1",
            "HOME": str(self.directory), "TMPDIR": str(self.temporary),
            "ANSIBLE_INVENTORY": str(self.directory / "inventory.yml"), "ANSIBLE_STDOUT_CALLBACK": "json_lines",
            "ANSIBLE_CALLBACK_PLUGINS": str(ROOT / "tests/recipes/callback_plugins"),
            # The role has to finish on every host even if the first failure ends the play.
            "ANSIBLE_ANY_ERRORS_FATAL": "true", "ANSIBLE_PIPELINING": "true",
        }
        output, errors, status = self.run_program("ansible-playbook", *options, PLAYBOOK, env=environment, timeout=300)
        self.assertEqual((errors, [*self.temporary.iterdir()]), ("", []))
        events = {}
        for host, task, result in map(json.loads, output.splitlines()):
            outcome = result.get("rc", result["msg"]) if result["failed"] else "changed"
            events.setdefault(host, [])
            if result["failed"] or result["changed"]:
                events[host].append((task.removeprefix("quorvel : "), outcome))
        return status, events

    def read_files(self, name):
        return {path.parent.name: path.read_text() for path in self.hosts.glob(f"*/{name}")}

    def check(self, *options):
        """Like play, in check mode, which must not change a file."""
        files = self.read_files("Info.plist"), self.read_files("Quorvel.cfg")
        outcome = self.play("--check", *options)
        self.assertEqual((self.read_files("Info.plist"), self.read_files("Quorvel.cfg")), files)
        return outcome

    def test_fifty_hosts(self):
        self.write_hosts(dict.fromkeys(HOSTS, BEFORE))
        self.assertEqual(self.check(), (0, dict.fromkeys(HOSTS, [INSTALLED, PREDICTED])))
        self.assertEqual(self.play(), (0, dict.fromkeys(HOSTS, [INSTALLED, UPDATED, RESTARTED])))
        self.assertEqual(self.read_files("Info.plist"), dict.fromkeys(HOSTS, AFTER))
        self.assertEqual(self.check(), (0, dict.fromkeys(HOSTS, [])))
        self.assertEqual(self.play(), (0, dict.fromkeys(HOSTS, [])))

    def test_some_hosts_fail(self):
        others = dict.fromkeys(HOSTS[:4], BEFORE)
        faulty = {"missing-key": BEFORE.replace("ifdProductID", "ifdOtherID"), "wrong-order": BEFORE}
        lines = {"missing-key": "Error: Tree[x] not found", "wrong-order": UNORDERED}
        self.write_hosts({**faulty, **others}, {"wrong-order": {"quorvel_entries": ENTRIES[::-1]}})
        failed = {host: [INSTALLED, REFUSED, ("Fail with the tool's line", line)] for host, line in lines.items()}
        self.assertEqual(self.check(), (2, {**failed, **dict.fromkeys(others, [INSTALLED, PREDICTED])}))
        self.assertEqual(self.play(), (2, {**failed, **dict.fromkeys(others, [INSTALLED, UPDATED, RESTARTED])}))
        self.assertEqual(self.read_files("Info.plist"), {**faulty, **dict.fromkeys(others, AFTER)})

    def test_a_new_configuration_alone_restarts_nothing(self):
        self.write_hosts({"desk": AFTER})
        self.assertEqual(self.play(), (0, {"desk": [INSTALLED]}))

    def test_refuses_what_a_configuration_cannot_hold(self):
        values = ["a\nb", "a\n", "a\rb", " a", "a ", "", 0x0100, 2100 * "#", 2100 * "\u00e9"]
        keys = ["a\nb", "a:b", "a=b", "FileName", "Tree"]
        entries = [*({"key": "ifdVendorID", "value": value} for value in values),
                   *({"key": key, "value": "0x0100"} for key in keys)]
        candidates = [["Info.plist"], ["/a:/b"], ["/a\nb"], "/etc/Info.plist"]
        rows = [*({"quorvel_entries": [entry]} for entry in entries),
                {"quorvel_entries": 2 * [{"key": "ifdVendorID", "value": "0x0100"}]},
                *({"quorvel_candidates": paths} for paths in candidates)]
        variables = dict(zip(HOSTS, rows))
        self.write_hosts(dict.fromkeys(variables, BEFORE), variables)
        events = self.play()[1]
        for host, row in variables.items():
            [(task, message)] = events[host]
            self.assertEqual(task, "Refuse what the configuration cannot hold", row)
            self.assertRegex(message, "^Candidates, keys and values are strings of one line", row)
