"""The shell recipes of examples/ on property lists that are outdated, current, or cannot be updated."""
import shutil

from sample import AFTER, BEFORE, CONFIG, ROOT, UNORDERED_CONFIG, SampleTest

# The machine's paths in the recipes, and what the test replaces them with.
PATHS = {"/usr/local/bin/quorvel-check": "./quorvel-check", "/usr/local/bin/Quorvel": "Quorvel",
         "/usr/local/etc": ".", "/usr/share/example-reader": ".", "/run/systemd/system": "none"}


class ShellRecipes(SampleTest):
    def run_recipe(self, recipe, *arguments):
        script = (ROOT / "examples" / recipe).read_text()
        for path, replacement in PATHS.items():
            script = script.replace(path, replacement)
        return self.run_program("sh", "-c", script, recipe, *arguments)[2]

    def test_status_and_property_list(self):
        # Not in the tool's directory: quorvel-check has to find the tool on the PATH.
        (self.directory / "quorvel-check").symlink_to(shutil.which("quorvel-check"))
        for recipe, case, config, plist, expected_status, expected_plist in [
            ("munki/installcheck_script", "outdated", CONFIG, BEFORE, 0, BEFORE),
            ("munki/installcheck_script", "current", CONFIG, AFTER, 1, AFTER),
            ("munki/installcheck_script", "unordered", UNORDERED_CONFIG, BEFORE, 1, BEFORE),
            ("munki/postinstall_script", "outdated", CONFIG, BEFORE, 0, AFTER),
            ("munki/postinstall_script", "invalid", "invalid", BEFORE, 99, BEFORE),
            ("package/postinst configure", "outdated", CONFIG, BEFORE, 0, AFTER),
            ("package/postinst triggered", "outdated", CONFIG, BEFORE, 0, AFTER),
            ("package/postinst triggered", "current", CONFIG, AFTER, 0, AFTER),
            ("package/postinst configure", "unordered", UNORDERED_CONFIG, BEFORE, 2, BEFORE),
            ("package/postinst abort-remove", "outdated", CONFIG, BEFORE, 0, BEFORE),
        ]:
            with self.subTest(recipe, case=case):
                self.write_sample(config, plist)
                self.assertEqual(self.run_recipe(*recipe.split()), expected_status)
                self.assertEqual(self.read_plist(), expected_plist)
