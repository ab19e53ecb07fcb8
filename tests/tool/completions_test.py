"""What the completions of bash, zsh and fish offer, and that they never run the tool."""
import contextlib
import os
import shlex
import tty

from sample import ROOT, SampleTest

HELP, WITH_SPACE = ["-h", "-help", "--help"], "my reader.cfg"
CASES = [  # The words before the one typed, what is typed of it, and all expected candidates.
    ("Quorvel", "", ["update", "restore", *HELP]),
    ("Quorvel -h", "", []),
    ("Quorvel restore", "-c", ["-config"]),
    ("Quorvel update", "", ["-v", "-config"]),
    ("Quorvel update", "-c\tm", [WITH_SPACE]),
    ("Quorvel update -v", "-config=", [WITH_SPACE, "a:b", "directory"]),
    ("Quorvel update", "-config=my\\ ", [WITH_SPACE]),
    ("Quorvel update", "-config=~/files/dir", ["~/files/directory"]),
    ("quorvel-check", "m", [WITH_SPACE]),
    ("quorvel-check", "-", HELP),
]
PREPARE = r"""cd; mkdir -p bin files/directory; printf '#!/bin/sh\n>~/ran' | tee bin/Quorvel >bin/quorvel-check
    chmod +x bin/*; PATH=~/bin:$PATH; cd files; touch 'my reader.cfg' a:b; exec """
# ^N inserts all candidates, ^P records the line; in fish ^P does both.
BASH = r""". "$COMPLETIONS/Quorvel.bash"; bind '"\C-n": insert-completions'
    bind -x '"\C-p": printf "%s\n" "$READLINE_LINE" >>~/lines; READLINE_LINE='"""
ZSH = r"""fpath=("$COMPLETIONS" $fpath); autoload -U compinit; compinit -u -D
    zstyle ':completion:all:*' completer _all_matches _complete; zstyle ':completion:all:*' insert yes
    zle -C all complete-word _generic; bindkey ^N all
    record() { print -r -- "$BUFFER" >>~/lines; BUFFER= }; zle -N record; bindkey ^P record"""
FISH = r"""source "$COMPLETIONS/Quorvel.fish"; bind \cn ''; bind \cp record; function record
    set -l candidates (complete -C (commandline -c) | string replace -r '\t.*' '' | string escape)
    echo (commandline -opc) $candidates >>~/lines; commandline ''; end"""


class Completions(SampleTest):
    def completed_lines(self, shell, setup):
        """Returns the words of each case's line after the shell has inserted all candidates."""
        environment = {"PATH": os.environ["PATH"], "HOME": str(self.directory), "TERM": "dumb", "SETUP": setup,
                       "COMPLETIONS": str(ROOT / "app/completions"), "INPUTRC": "/dev/null"}
        child, terminal = os.forkpty()
        if child == 0:
            tty.setraw(0)
            os.execle("/bin/sh", "sh", "-ec", PREPARE + shell, environment)
        os.read(terminal, 1)  # The shell prints its prompt once the terminal is raw.
        keys = "".join(f"{before} {typed}\x0e\x10" for before, typed, _ in CASES)
        os.write(terminal, f'eval "$SETUP"\r{keys}exit\r'.encode())
        with contextlib.suppress(OSError):  # The end of a terminal on Linux.
            while os.read(terminal, 4096):
                pass
        os.close(terminal)
        os.waitpid(child, 0)
        return [shlex.split(line) for line in (self.directory / "lines").read_text().splitlines()]

    def assert_completes(self, shell, setup):
        for (before, typed, expected), words in zip(CASES, self.completed_lines(shell, setup), strict=True):
            inserted = [word for word in words[len(before.split()):] if word != typed]
            candidates = {word.rstrip("=/").removeprefix("-config=") for word in inserted}
            self.assertEqual(candidates, set(expected), f"{before} {typed}")
        self.assertFalse((self.directory / "ran").exists(), "the tool was run")

    def test_candidates(self):
        for shell, setup in ("bash --norc --noprofile -i", BASH), ("zsh -dfi", ZSH), ("fish -Ni", FISH):
            with self.subTest(shell):
                self.setUp()
                self.assert_completes(shell, setup)
