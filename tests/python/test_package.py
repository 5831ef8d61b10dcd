"""The package as it is installed."""

import importlib.metadata
import pathlib
import subprocess
import sys

import pytest

import command
import nbscore

INSTALLED = pathlib.Path(nbscore.__file__).parent


def run_python(*arguments):
    return subprocess.run([sys.executable, *arguments], capture_output=True, text=True, check=False)


def test_what_is_tested_is_installed_and_not_the_tree():
    assert command.REPOSITORY not in INSTALLED.parents or "site-packages" in INSTALLED.parts
    assert importlib.metadata.version("nbscore") == nbscore.__version__


def test_importing_brings_neither_numpy_nor_pandas():
    done = run_python("-c", "import nbscore, sys; print([m for m in ('numpy', 'pandas', 'dask', 'json') "
                            "if m in sys.modules])")
    assert done.stdout == "[]\n", done.stderr


def test_single_cases_need_no_pandas():
    done = run_python("-c", "import nbscore, sys; m = nbscore.load(sys.argv[1]); "
                            "m.score_case({'class': 'first', 'sex': 'male', 'age': 'adult'}); "
                            "print('pandas' in sys.modules)",
                      str(command.EXAMPLES / "titanic" / "titanic.pmml"))
    assert done.stdout == "False\n", done.stderr


def test_the_module_is_the_command():
    version = command.run("--version")
    assert version.split() == ["nbscore", nbscore.__version__]
    script = pathlib.Path(sys.executable).parent / "nbscore"
    assert subprocess.run([script, "--version"], capture_output=True, text=True, check=True).stdout == version
    refused = run_python("-m", "nbscore", "score", "nothing.pmml")
    assert refused.returncode not in (0, 1) or refused.stderr
    assert run_python("-m", "nbscore", "no-such-verb").returncode == 2


def test_all_names_that_the_package_shows_are_there():
    for name in nbscore.__all__:
        assert getattr(nbscore, name) is not None
    assert (INSTALLED / "py.typed").exists()


def test_everything_public_says_what_it_is():
    for name in ("load", "check", "verify", "Model", "Field", "Check", "Verification", "Problem", "DocumentError",
                 "CaseError", "ArrowScores", "ArrowScoreStream", "PreparedCase"):
        assert getattr(nbscore, name).__doc__, name
    for name, member in vars(nbscore.Model).items():
        if not name.startswith("_") and name not in ("rule",):
            assert member.__doc__, name


@pytest.mark.parametrize("source, findings", [
    ("import nbscore\nmodel = nbscore.load('m.pmml')\nmodel.score_case({'a': 1}, allow_missing_fields=True)\n"
     "names: tuple[str, ...] = model.sub_models\n", 0),
    ("import nbscore\nnbscore.load('m.pmml', rule='other')\n", 1),
    ("import nbscore\nnbscore.load(5)\n", 1),
], ids=["right", "wrong rule", "wrong document"])
def test_type_checkers_know_the_package(source, findings, tmp_path):
    (tmp_path / "user.py").write_text(source)
    done = run_python("-m", "mypy", "--strict", "--cache-dir", str(tmp_path / "cache"), str(tmp_path / "user.py"))
    assert done.returncode == findings, done.stdout + done.stderr


def test_the_package_itself_is_typed(tmp_path):
    done = run_python("-m", "mypy", "--strict", "--cache-dir", str(tmp_path), "--ignore-missing-imports", "-p",
                      "nbscore")
    assert done.returncode == 0, done.stdout + done.stderr
