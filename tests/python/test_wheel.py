"""The wheel holds all that the package needs."""
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).parents[2]


def test_the_wheel_installs_and_runs_elsewhere(tmp_path):
    packed = subprocess.run([ROOT / "scripts/package", "python"], capture_output=True, text=True, timeout=600)
    assert packed.returncode == 0, packed.stderr
    wheel = pathlib.Path(packed.stdout.splitlines()[-1])
    subprocess.run(["/usr/bin/python3", "-m", "pip", "install", "--quiet", "--no-index", "--no-deps", "--target",
                    tmp_path / "site", wheel], check=True, capture_output=True)
    assert (tmp_path / "site/quexel/__init__.pyi").stat().st_size > 100_000
    assert (tmp_path / "site/quexel/py.typed").exists()
    code = "import quexel; print(quexel.__version__, quexel.__file__); print(quexel.MonthEnd('2024-02-01'))"
    done = subprocess.run(["/usr/bin/python3", "-c", code], capture_output=True, text=True, cwd=tmp_path,
                          env={"PYTHONPATH": str(tmp_path / "site")})
    assert done.returncode == 0, done.stderr
    version, path = done.stdout.split()[:2]
    assert f"-{version}-" in wheel.name and path.startswith(str(tmp_path)) and "2024-02-29" in done.stdout
