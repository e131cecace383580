"""Files are replaced as a whole: a full disk, a kill or an error leaves what stood there before."""

import os
import resource
import signal
import subprocess
import sys
import time
from contextlib import contextmanager

import _native
import pytest

NUMBERS = [0.1 * i for i in range(20000)]
POINTS = [[1.0, 0.0, 0.0], [0.0, 1.0, 0.0], [-1.0, 0.0, 0.0], [0.0, -1.0, 0.5]]


def sparse_matrix():
    entry = _native.SparseEntry()
    entry.value = 0.1
    column = _native.SparseRigidityColumn()
    column.entries = [entry] * 20000
    matrix = _native.SparseRigidityMatrix()
    matrix.columns = [column]
    return matrix


WRITERS = {
    "write_sparse_matrix_market": lambda path: _native.ContactStressMap.write_sparse_matrix_market(
        sparse_matrix(), path
    ),
    "write_vector_market": lambda path: _native.ContactStressMap.write_vector_market(NUMBERS, path),
    "write_vector_csv": lambda path: _native.ContactStressMap.write_vector_csv(NUMBERS, path),
    "resolved_tube_write_matrix_market": lambda path: _native.resolved_tube_write_matrix_market(sparse_matrix(), path),
    "resolved_tube_write_vector_market": lambda path: _native.resolved_tube_write_vector_market(NUMBERS, path),
}

LEGACY = "% legacy\n0 0 0\n" + "1 2 3 4 5 6\n" * 20000


@contextmanager
def full_disk(size=4096):
    """No file may grow beyond so many bytes."""
    before = resource.getrlimit(resource.RLIMIT_FSIZE)
    ignored = signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (size, before[1]))
    try:
        yield
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, before)
        signal.signal(signal.SIGXFSZ, ignored)


@pytest.fixture(params=WRITERS, ids=list(WRITERS))
def writer(request):
    return WRITERS[request.param]


def test_a_device_without_room_is_an_error(writer):
    with pytest.raises(RuntimeError, match=r"/dev/full: No space left on device"):
        writer("/dev/full")


def test_a_full_disk_leaves_the_old_file(writer, tmp_path):
    path = tmp_path / "file"
    path.write_text("old")
    with full_disk(), pytest.raises(RuntimeError, match=f"{path}: File too large"):
        writer(str(path))
    assert path.read_text() == "old"
    assert os.listdir(tmp_path) == ["file"]


def test_a_full_disk_leaves_the_old_report(tmp_path):
    path = tmp_path / "report.json"
    path.write_text("old")
    meta = _native.EvidenceReportMeta()
    meta.compiler = "x" * 20000
    with full_disk():
        assert _native.EvidenceReportAPI.write_evidence_report(str(path), meta, []) is False
    assert path.read_text() == "old"
    assert _native.EvidenceReportAPI.write_evidence_report("/dev/full", meta, []) is False


def test_rights_links_and_names_are_kept(writer, tmp_path):
    target = tmp_path / "folder" / "target"
    target.parent.mkdir()
    target.write_text("old")
    target.chmod(0o640)
    link = tmp_path / "link"
    link.symlink_to("folder/target")
    writer(str(link))
    assert link.is_symlink()
    assert target.stat().st_mode & 0o7777 == 0o640
    written = target.read_bytes()
    assert len(written) > 100000
    # A new file gets the rights that the user's mask leaves, also at the end of a link that leads nowhere yet.
    mask = os.umask(0o027)
    try:
        target.unlink()
        writer(str(link))
    finally:
        os.umask(mask)
    assert target.read_bytes() == written and link.is_symlink()
    assert target.stat().st_mode & 0o7777 == 0o640
    # All names of a file stay names of it.
    other = tmp_path / "other"
    other.hardlink_to(target) if hasattr(other, "hardlink_to") else os.link(target, other)
    target.write_text("much longer than before\n" * 50000)
    writer(str(target))
    assert other.read_bytes() == written and other.samefile(target)
    assert sorted(os.listdir(tmp_path)) == ["folder", "link", "other"] and os.listdir(target.parent) == ["target"]


def test_what_cannot_be_opened(writer, tmp_path):
    for path in ("", str(tmp_path), str(tmp_path / "missing" / "file"), "a\0b"):
        with pytest.raises(RuntimeError, match="could not open"):
            writer(path)
    assert os.listdir(tmp_path) == []


def test_a_hard_linked_file_keeps_its_content_on_a_full_disk(writer, tmp_path):
    path = tmp_path / "file"
    path.write_text("old")
    os.link(path, tmp_path / "other")
    with full_disk(), pytest.raises(RuntimeError, match="File too large"):
        writer(str(path))
    assert path.read_text() == "old"


def test_a_pipe_is_written_to(writer, tmp_path):
    pipe = tmp_path / "pipe"
    os.mkfifo(pipe)
    plain = tmp_path / "plain"
    writer(str(plain))
    read = tmp_path / "read"
    with read.open("wb") as file, subprocess.Popen(["cat", pipe], stdout=file):
        writer(str(pipe))
    assert read.read_bytes() == plain.read_bytes()


def test_canonicalising_on_a_full_disk(tmp_path):
    path = tmp_path / "knot.fseries"
    path.write_text(LEGACY)
    with full_disk(), pytest.raises(RuntimeError, match=f"cannot write file: {path}"):
        _native.canonicalize_fseries_file_inplace(str(path))
    assert path.read_text() == LEGACY
    assert os.listdir(tmp_path) == ["knot.fseries"]


def test_canonicalising_and_kills(tmp_path):
    """Whenever the process dies, the file holds all of its rows."""
    path = tmp_path / "knot.fseries"
    text = "% legacy\n0 0 0\n" + "1 2 3 4 5 6\n" * 200000
    done = text.replace("0 0 0\n", "    0.000000" * 6 + "\n", 1)
    code = "import _native, sys; sys.stdout.write('.'); sys.stdout.flush(); "
    code += f"_native.canonicalize_fseries_file_inplace({str(path)!r})"
    seen = set()
    for attempt in range(12):
        path.write_text(text)
        child = subprocess.Popen([sys.executable, "-c", code], stdout=subprocess.PIPE)
        child.stdout.read(1)
        time.sleep(0.004 * attempt)
        child.kill()
        child.wait()
        child.stdout.close()
        seen.add(path.read_text())
    assert seen <= {text, done}
