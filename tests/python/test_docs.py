"""The page and the example do what they say."""

import contextlib
import io
import re
import subprocess
import sys

import command
import nbscore

PAGE = (command.REPOSITORY / "docs" / "python.md").read_text(encoding="utf-8")


def test_the_page_shows_what_its_programs_print(monkeypatch):
    monkeypatch.chdir(command.EXAMPLES / "titanic")
    blocks = re.findall(r"```(python|text)\n(.*?)```", PAGE, re.DOTALL)
    names = {}
    printed = ""
    shown = 0
    for kind, text in blocks:
        if kind == "python":
            with contextlib.redirect_stdout(io.StringIO()) as output:
                exec(text, names)  # pylint: disable=exec-used
            printed = output.getvalue()
        else:
            assert printed == text
            shown += 1
    assert shown >= 4


def test_the_page_names_all_that_models_do():
    for name in vars(nbscore.Model):
        if not name.startswith("_") and name not in ("is_set", "sub_models", "rule"):
            assert name in PAGE, name


def test_the_example_runs_and_draws(tmp_path):
    example = command.EXAMPLES / "python" / "titanic.py"
    picture = tmp_path / "titanic.png"
    done = subprocess.run([sys.executable, example, picture], capture_output=True, text=True, check=True)
    assert "John Jacob Astor                 no           0.4721" in done.stdout
    assert "a woman of the third class: 0.6477" in done.stdout
    assert picture.read_bytes().startswith(b"\x89PNG")
