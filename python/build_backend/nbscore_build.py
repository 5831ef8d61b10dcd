"""Builds the wheel of nbscore: the package, the module that it calls, the library, and the command.

Settings (`pip wheel --config-settings NAME=VALUE`):

build-dir   a folder of a CMake build, which is used as it is configured; else build/python of the repository, made anew
            where it is not there
"""

import base64
import hashlib
import os
import pathlib
import re
import subprocess
import sysconfig
import tempfile
import zipfile

PACKAGE = pathlib.Path(__file__).resolve().parent.parent
REPOSITORY = PACKAGE.parent


def read_version():
    text = (REPOSITORY / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"project\(nbscore VERSION ([0-9.]+)", text).group(1)


def build(settings, stage):
    """Builds what is compiled, and lays it into a folder as the wheel has it."""
    folder = pathlib.Path(settings.get("build-dir", "build/python"))
    folder = folder if folder.is_absolute() else REPOSITORY / folder
    configure = ["cmake", "-S", REPOSITORY, "-B", folder]
    if not (folder / "CMakeCache.txt").exists():
        configure += ["-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DNBSCORE_TESTS=OFF"]
    # Of the interpreter that runs this, whatever others there are.
    configure += ["-DNBSCORE_PYTHON_HEADERS=" + sysconfig.get_path("include")]
    jobs = str(os.environ.get("JOBS", os.cpu_count()))
    subprocess.run(configure, check=True)
    subprocess.run(["cmake", "--build", folder, "-j", jobs, "--target", "nbscore_wheel"], check=True)
    subprocess.run(["cmake", "--install", folder, "--component", "wheel", "--prefix", stage], check=True)


def list_files(root, suffixes=None):
    """(name in the wheel, file) of all files below a folder, or of those with such endings."""
    return [(path.relative_to(root).as_posix(), path) for path in sorted(root.rglob("*"))
            if path.is_file() and (suffixes is None or path.suffix in suffixes)]


def find_tag():
    """The module is for every Python from 3.11 on; what is compiled is for this kind of machine."""
    return "cp311-abi3-" + re.sub(r"[-.]", "_", sysconfig.get_platform())


def write_info(version):
    """What tells of the wheel, by file."""
    metadata = (f"Metadata-Version: 2.1\nName: nbscore\nVersion: {version}\n"
                "Summary: Scores cases with Naive Bayes models written in PMML\n"
                "Requires-Python: >=3.11\nRequires-Dist: numpy\nDescription-Content-Type: text/markdown\n\n"
                + (PACKAGE / "README.md").read_text(encoding="utf-8"))
    wheel = f"Wheel-Version: 1.0\nGenerator: nbscore\nRoot-Is-Purelib: false\nTag: {find_tag()}\n"
    scripts = "[console_scripts]\nnbscore = nbscore.__main__:main\n"
    return {"METADATA": metadata.encode(), "WHEEL": wheel.encode(), "entry_points.txt": scripts.encode()}


class Wheel:
    """A wheel while it is written. The same content makes the same bytes."""

    def __init__(self, file, info):
        self.archive = zipfile.ZipFile(file, "w", zipfile.ZIP_DEFLATED)
        self.info = info
        self.record = []

    def add(self, name, content, mode=0o644):
        entry = zipfile.ZipInfo(name)
        entry.compress_type = zipfile.ZIP_DEFLATED
        entry.external_attr = (0o100000 | mode) << 16
        self.archive.writestr(entry, content)
        digest = base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
        self.record.append(f"{name},sha256={digest},{len(content)}\n")

    def finish(self):
        name = f"{self.info}/RECORD"
        self.record.append(f"{name},,\n")
        self.archive.writestr(zipfile.ZipInfo(name), "".join(self.record))
        self.archive.close()


def prepare_metadata_for_build_wheel(metadata_directory, config_settings=None):
    version = read_version()
    info = f"nbscore-{version}.dist-info"
    folder = pathlib.Path(metadata_directory) / info
    folder.mkdir()
    for name, content in write_info(version).items():
        (folder / name).write_bytes(content)
    return info


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    version = read_version()
    name = f"nbscore-{version}-{find_tag()}.whl"
    info = f"nbscore-{version}.dist-info"
    with tempfile.TemporaryDirectory() as folder:
        stage = pathlib.Path(folder).resolve()
        build(config_settings or {}, stage)
        wheel = Wheel(pathlib.Path(wheel_directory) / name, info)
        for inside, path in list_files(PACKAGE / "src", {".py", ".pyi", ".typed"}):
            wheel.add(inside, path.read_bytes())
        for inside, path in list_files(stage):
            wheel.add(inside, path.read_bytes(), 0o755)
    for inside, content in write_info(version).items():
        wheel.add(f"{info}/{inside}", content)
    wheel.finish()
    return name


def build_sdist(sdist_directory, config_settings=None):
    raise NotImplementedError("The package is built from the whole repository: build a wheel.")
