#!/usr/bin/env python3
"""The role, driven over fifty hosts, each a folder of its own on this machine.

QUORVEL names the tool. Everything is written to a scratch folder, which goes when it is done."""
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

TESTS = pathlib.Path(__file__).resolve().parent
PLAYBOOK = TESTS.parent / "playbook.yml"
ROOT = TESTS.parents[2]

HOSTS = [f"desk-{number:02}" for number in range(1, 51)]
ENTRIES = [("ifdVendorID", "0x0100"), ("ifdProductID", "0x0200"), ("ifdFriendlyName", "Example Reader #2")]
BEFORE = (ROOT / "examples" / "Info.plist").read_text()
LACKING = BEFORE.replace("ifdProductID", "ifdOtherID")
AFTER = BEFORE
for name, entry in ENTRIES:
    head = f"<key>{name}</key>\n\t<array>\n"
    AFTER = AFTER.replace(head, f"{head}\t\t<string>{entry}</string>\n")

# Even where the play ends with the first host that fails, the others have to come to their end.
SETTINGS = f"""
[defaults]
any_errors_fatal = true
home = {{scratch}}/ansible
remote_tmp = {{scratch}}/remote
inventory = {{scratch}}/inventory.yml
roles_path = {TESTS.parent}/roles
callback_plugins = {TESTS}/callback_plugins
stdout_callback = json_lines
forks = 4
[connection]
pipelining = true
"""

# The events of a host, task by task: (task, what came of it).
INSTALLED = ("Install the configuration", "changed")
PREDICTED = ("Predict the update", "changed")
UPDATED = ("Update the list", "changed")
RESTARTED = ("Restart the smart-card service", "changed")
FAILED = ("Fail with the tool's line", "Error: Tree[x] not found")


def event(task, result):
    if result.get("failed"):
        return [(task, result.get("rc", result["msg"]))]
    return [(task, "changed")] if result["changed"] else []


class Fleet(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="quorvel-")
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name)
        # In these names the role has something to quote and to escape.
        self.hosts = self.scratch / "hosts #1"
        self.bin = self.scratch / "the tool"
        for folder in self.hosts, self.bin, self.scratch / "home", self.scratch / "temporary":
            folder.mkdir()
        for program in os.environ["QUORVEL"], ROOT / "app" / "quorvel-check":
            shutil.copy(program, self.bin)
        (self.scratch / "ansible.cfg").write_text(SETTINGS.format(scratch=scratch.name))

    def write_host(self, host, content, config=None):
        folder = self.hosts / host
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        (folder / "Info.plist").write_text(content)
        if config:
            (folder / "Quorvel.cfg").write_text(config)

    def write_inventory(self, variables):
        """The hosts with the variables of each, over those that all have."""
        folder = f"{self.hosts}/{{{{ inventory_hostname }}}}"
        common = {
            "ansible_connection": "local", "ansible_become": False,
            "ansible_python_interpreter": "{{ ansible_playbook_python }}",
            "quorvel_bin": str(self.bin), "quorvel_config": f"{folder}/Quorvel.cfg",
            "quorvel_candidates": [f"{folder}/missing/Info.plist", f"{folder}/Info.plist"],
            "quorvel_entries": [{"key": key, "value": value} for key, value in ENTRIES],
            "quorvel_restart": f"sh -c 'echo restarted >>\"{folder}/service\"'",
        }
        inventory = {"all": {"hosts": variables, "vars": common}}
        # JSON is YAML as well.
        (self.scratch / "inventory.yml").write_text(json.dumps(inventory))

    def play(self, *options, playbook=PLAYBOOK):
        """The exit status of one run, and of each host the changes and failures."""
        environment = {
            "PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "PYTHONDONTWRITEBYTECODE": "1",
            "HOME": str(self.scratch / "home"), "TMPDIR": str(self.scratch / "temporary"),
            "ANSIBLE_CONFIG": str(self.scratch / "ansible.cfg"),
        }
        done = subprocess.run(["ansible-playbook", *options, playbook], env=environment, capture_output=True,
                              text=True, timeout=300)
        self.assertEqual((done.stderr, [*(self.scratch / "temporary").iterdir()]), ("", []))
        events = {}
        self.shown = {}
        for host, task, result in map(json.loads, done.stdout.splitlines()):
            events.setdefault(host, []).extend(event(task.removeprefix("quorvel : "), result))
            self.shown.update({host: result[key] for key in result if key == "quorvel_check.stdout_lines"})
        return done.returncode, events

    def state(self):
        """Every file and folder of the hosts, with all that a run can change."""
        paths = [self.hosts, *self.hosts.rglob("*")]
        return {path: (path.stat().st_mtime_ns, path.stat().st_ino, path.stat().st_mode,
                       path.is_file() and path.read_bytes()) for path in paths}

    def check(self, *options):
        """What a check run predicts; it must touch nothing."""
        before = self.state()
        outcome = self.play("--check", *options)
        self.assertEqual(self.state(), before)
        return outcome

    def assert_host(self, host, content, restarts):
        files = {path.name: path.read_text() for path in (self.hosts / host).iterdir()}
        del files["Quorvel.cfg"]
        service = {"service": "restarted\n"} if restarts else {}
        self.assertEqual(files, {"Info.plist": content, **service}, host)

    def test_fifty_hosts(self):
        self.write_inventory({host: {} for host in HOSTS})
        for host in HOSTS:
            # The older configuration has nothing to insert: the prediction has to be for the new one.
            self.write_host(host, BEFORE, f"FileName={self.hosts}/{host}/Info.plist\nTree=ifdVendorID\n"
                            "ifdVendorID=0x0001\n".replace("#", "##"))
        self.assertEqual(self.check(), (0, {host: [INSTALLED, PREDICTED] for host in HOSTS}))
        self.assertEqual(self.play(), (0, {host: [INSTALLED, UPDATED, RESTARTED] for host in HOSTS}))
        self.assertEqual(self.check(), (0, {host: [] for host in HOSTS}))
        self.assertEqual(self.play(), (0, {host: [] for host in HOSTS}))
        for host in HOSTS:
            self.assert_host(host, AFTER, restarts=True)

        faulty = HOSTS[16]
        for host in HOSTS:
            self.write_host(host, LACKING if host == faulty else BEFORE)
        predictions = {host: [INSTALLED, PREDICTED] for host in HOSTS}
        predictions[faulty] = [INSTALLED, ("Predict the update", 2), FAILED]
        self.assertEqual(self.check(), (2, predictions))
        outcomes = {host: [INSTALLED, UPDATED, RESTARTED] for host in HOSTS}
        outcomes[faulty] = [INSTALLED, ("Update the list", 99), FAILED]
        self.assertEqual(self.play(), (2, outcomes))
        for host in HOSTS:
            self.assert_host(host, *((LACKING, False) if host == faulty else (AFTER, True)))

    def test_what_is_shown_and_when_the_service_is_restarted(self):
        self.write_inventory({HOSTS[0]: {}})
        self.write_host(HOSTS[0], BEFORE)
        self.check("--diff")
        changes = [line for line in self.shown[HOSTS[0]][2:] if line[0] in "+-"]
        self.assertEqual(changes, [f"+\t\t<string>{value}</string>" for _, value in ENTRIES])

        later = self.scratch / "later.yml"
        later.write_text(json.dumps([{"hosts": "all", "gather_facts": False, "roles": ["quorvel"], "tasks": [
            {"name": "Fail later", "ansible.builtin.fail": {"msg": "later"}}]}]))
        self.assertEqual(self.play(playbook=later), (2, {HOSTS[0]: [
            INSTALLED, UPDATED, RESTARTED, ("Fail later", "later")]}))

        (self.hosts / HOSTS[0] / "Quorvel.cfg").unlink()
        self.assertEqual(self.play(), (0, {HOSTS[0]: [INSTALLED]}))

    def test_what_the_configuration_cannot_hold_is_refused(self):
        def entry(key="ifdVendorID", value="0x0100", times=1):
            return {"quorvel_entries": times * [{"key": key, "value": value}]}

        values = ["a\nb", "a\n", "a\rb", " a", "a ", "", 0x0100, 2100 * "#", 2100 * "\u00e9"]
        keys = ["a\nb", "a:b", "a=b", "FileName", "Tree"]
        candidates = ["Info.plist", "/a:/b", "/a\nb"]
        rows = [*(entry(value=value) for value in values), *(entry(key=key) for key in keys),
                *({"quorvel_candidates": ["/etc/Info.plist", path]} for path in candidates),
                {"quorvel_candidates": "/etc/Info.plist"}, entry(times=2)]
        self.write_inventory(dict(zip(HOSTS, rows)))
        message = ('Candidates, keys and values are strings of one line without blanks around them, and make lines '
                   'of up to 4,092 bytes; candidates are a list of absolute paths without ":"; each key stands once, '
                   'has neither ":" nor "=" and is not FileName or Tree.')
        refused = [("Refuse what the configuration cannot hold", message)]
        self.assertEqual(self.play(), (2, {host: refused for host, _ in zip(HOSTS, rows)}))


if __name__ == "__main__":
    unittest.main(verbosity=2)
