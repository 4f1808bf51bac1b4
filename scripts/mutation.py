#!/usr/bin/env python3
"""Mutation testing of the C++ sources: how many small faults do the tests catch?

Lists every single-point mutant of the .cpp files of the folders below, samples
N of them with a fixed seed (spread over the folders in turn), and for each one
changes the source, rebuilds build/mutation incrementally, runs ctest and puts
the source back byte for byte. Prints killed / survived / did not build / timed
out per folder and the score: killed over the mutants that built.
"""
import argparse, collections, fcntl, os, random, re, signal, subprocess, sys, time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
FOLDERS = ["src/engine", "src/store", "src/edit", "src/output", "src/sheet", "src/print"]
BUILD = os.path.join(ROOT, "build", "mutation")
LOCK = "/tmp/qorvale-build.lock"
PENDING = os.path.join(BUILD, "pending-restore")  # the original of a file being mutated

Mutant = collections.namedtuple("Mutant", "path line col op old new text")

# Lines that declare rather than compute; a mutant there means nothing or cannot build.
SKIP_LINE = re.compile(r"^\s*(#|static_assert|using\b|namespace\b|template\s*<|extern\b|Q_[A-Z_]+\b|"
                       r"friend\b|typedef\b|enum\b|class\b|struct\b|public:|private:|protected:)")
BINARY = [  # (operator, pattern, replacements); binary operators stand between spaces
    ("cmp-boundary", r"(?<= )(<|<=|>|>=)(?= )", {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}),
    ("cmp-flip", r"(?<= )(==|!=|<|<=|>|>=)(?= )",
     {"==": "!=", "!=": "==", "<": ">", ">": "<", "<=": ">=", ">=": "<="}),
    ("arith-swap", r"(?<= )(\+|-|\*|/|\+=|-=|\*=|/=)(?= )",
     {"+": "-", "-": "+", "*": "/", "/": "*", "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*="}),
    ("logic-swap", r"(?<= )(&&|\|\|)(?= )", {"&&": "||", "||": "&&"}),
]
INT_LIT = re.compile(r"(?<![\w.'])(\d+)([uUlL]*)(?![\w.'>])")
CALL_STMT = re.compile(r"^(\s*)((?:[A-Za-z_]\w*(?:::|\.|->))*[A-Za-z_]\w*\(.*\);)\s*$")
RETURN = re.compile(r"\breturn\b[^;]*;")
COND = re.compile(r"\b(if|while) \(")


def mask(lines):
    """The lines with comments, string and character literals blanked out (same columns)."""
    out, in_block = [], False
    for line in lines:
        res, i, n = [], 0, len(line)
        while i < n:
            if in_block:
                j = line.find("*/", i)
                end = n if j < 0 else j + 2
                res.append(" " * (end - i)); i = end; in_block = j < 0
            elif line.startswith("//", i):
                res.append(" " * (n - i)); i = n
            elif line.startswith("/*", i):
                in_block = True; res.append("  "); i += 2
            elif line[i] in "\"'":
                q, j = line[i], i + 1
                while j < n and line[j] != q:
                    j += 2 if line[j] == "\\" else 1
                res.append(q + " " * (min(j, n) - i - 1) + (q if j < n else "")); i = j + 1
            else:
                res.append(line[i]); i += 1
        out.append("".join(res)[:n])
    return out


def balanced(s):
    depth = 0
    for c in s:
        depth += c == "("; depth -= c == ")"
        if depth < 0: return False
    return depth == 0


def candidates(path):
    with open(os.path.join(ROOT, path), encoding="utf-8") as f:
        lines = f.read().split("\n")
    code = mask(lines)
    found = []

    def add(i, col, op, old, new):
        found.append(Mutant(path, i + 1, col, op, old, new, lines[i].strip()))

    prev = ""  # the last line with code before this one
    for i, c in enumerate(code):
        if not c.strip(): continue
        prev_line, prev = prev, c.rstrip()
        if SKIP_LINE.match(c) or (not c[0].isspace() and c.rstrip().endswith(("{", ",", ")"))):
            continue  # preprocessor, declarations, a function's head
        for op, pat, repl in BINARY:
            for m in re.finditer(pat, c):
                add(i, m.start(), op, m.group(1), repl[m.group(1)])
        for m in INT_LIT.finditer(c):
            before = c[:m.start()].rstrip()
            if before.endswith("[") and re.search(r"^\s*(?:[\w:<>,*&]+\s+)+\w+\[$", before): continue  # an array size
            add(i, m.start(), "const-off-by-one", m.group(0), str(int(m.group(1)) + 1) + m.group(2))
        for m in COND.finditer(c):
            start = m.end() - 1
            depth, j = 0, start
            for j in range(start, len(c)):
                depth += c[j] == "("; depth -= c[j] == ")"
                if depth == 0: break
            if depth == 0:
                inner = lines[i][start + 1:j]
                add(i, start, "negate-cond", "(" + inner + ")", "(!(" + inner + "))")
        ends_stmt = prev_line.endswith((";", "{", "}", ")", ":", "else")) or not prev_line
        m = CALL_STMT.match(c)
        if m and ends_stmt and balanced(m.group(2)) and not re.match(r"\s*(return|delete|throw)\b", c):
            add(i, len(m.group(1)), "drop-call", lines[i][len(m.group(1)):len(c.rstrip())], ";")
        for m in RETURN.finditer(c):
            nxt = next((d for d in code[i + 1:] if d.strip()), "")
            if nxt.rstrip() == "}": continue  # the last word of a function
            if balanced(m.group(0)):
                add(i, m.start(), "drop-return", lines[i][m.start():m.end()], "{}")
    return found


def apply(m, text):
    lines = text.split("\n")
    line = lines[m.line - 1]
    assert line[m.col:m.col + len(m.old)] == m.old, m
    lines[m.line - 1] = line[:m.col] + m.new + line[m.col + len(m.old):]
    return "\n".join(lines)


def sample(n, seed):
    rng, pools = random.Random(seed), []
    for folder in FOLDERS:
        pool = []
        for path in sorted(os.listdir(os.path.join(ROOT, folder))):
            if path.endswith(".cpp"): pool += candidates(folder + "/" + path)
        rng.shuffle(pool)
        pools.append(pool)
    picked, k = [], 0
    while len(picked) < n and any(pools):
        if pools[k % len(pools)]: picked.append(pools[k % len(pools)].pop())
        k += 1
    return picked, sum(len(p) for p in pools) + len(picked)


def run(cmd, timeout, cwd=BUILD):
    """Runs cmd in a process group of its own, ended whole on a timeout or a signal."""
    p = subprocess.Popen(cmd, cwd=cwd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                         text=True, errors="replace", start_new_session=True)
    try:
        out, _ = p.communicate(timeout=timeout)
        return p.returncode, out
    except BaseException:
        os.killpg(p.pid, signal.SIGKILL); p.wait()
        raise


class BuildLock:
    def __enter__(self):
        self.f = open(LOCK, "a"); fcntl.flock(self.f, fcntl.LOCK_EX)
    def __exit__(self, *exc):
        fcntl.flock(self.f, fcntl.LOCK_UN); self.f.close()


def build():
    return run(["cmake", "--build", BUILD, "-j", "2"], 3600)


def ctest(timeout, stop=True, folder=BUILD):
    cmd = ["ctest", "-j", "2", "--timeout", str(timeout)] + (["--stop-on-failure"] if stop else [])
    rc, out = run(cmd, 3600, folder)
    bad = re.findall(r"Test +#\d+: (\S+) \.*\s*\*+(\w+)", out)
    if rc == 0: return "survived", out
    if bad and all(s.startswith("Timeout") for _, s in bad): return "timed out", out
    return "killed", out


def restore_pending():
    if os.path.exists(PENDING):
        with open(PENDING, "rb") as f:
            path, _, data = f.read().partition(b"\n")
        with open(os.path.join(ROOT, path.decode()), "wb") as f: f.write(data)
        os.remove(PENDING)
        print(f"restored {path.decode()} from an interrupted run")


def main():
    ap = argparse.ArgumentParser(description="Mutation testing of src/ (see README).")
    ap.add_argument("n", nargs="?", type=int, default=60, help="mutants to run (default 60)")
    ap.add_argument("--seed", type=int, default=1, help="sampling seed (default 1)")
    ap.add_argument("--timeout", type=int, default=0,
                    help="seconds per test (default: 5 x the slowest test of the baseline, >= 30)")
    ap.add_argument("--list", action="store_true", help="print the sampled mutants and stop")
    a = ap.parse_args()
    mutants, total = sample(a.n, a.seed)
    print(f"{total} mutation points in {', '.join(FOLDERS)}; {len(mutants)} sampled, seed {a.seed}")
    if a.list:
        for m in mutants: print(f"  {m.path}:{m.line} {m.op}: {m.old} -> {m.new}")
        return 0
    def on_signal(sig, _):
        raise SystemExit(f"stopped by signal {sig}")
    for s in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP): signal.signal(s, on_signal)
    os.makedirs(BUILD, exist_ok=True)
    restore_pending()
    os.environ["QT_QPA_PLATFORM"] = "offscreen"
    os.environ.update(CCACHE_BASEDIR=ROOT, CCACHE_NOHASHDIR="1")
    start = time.time()
    with BuildLock():
        rc, out = run(["cmake", "-S", ROOT, "-B", BUILD, "-DCMAKE_BUILD_TYPE=RelWithDebInfo",
                       "-DCMAKE_C_COMPILER_LAUNCHER=ccache", "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache",
                       "-DQORVALE_BUILD_BENCH=OFF"], 600)
        if rc == 0: rc, out = build()
        if rc != 0: sys.exit(out[-4000:] + "\nThe unchanged sources do not build; nothing was mutated.")
        t0 = time.time()
        outcome, out = ctest(600, stop=False)
        suite = time.time() - t0
    if outcome != "survived":
        sys.exit(out[-4000:] + "\nThe tests fail on the unchanged sources; fix them before mutating.")
    slowest = max([float(t) for t in re.findall(r"Passed +([\d.]+) sec", out)] or [1.0])
    timeout = a.timeout or max(30, int(5 * slowest) + 1)
    print(f"baseline: builds, all tests pass (ctest {suite:.0f} s); {timeout} s per test")

    results = []
    for k, m in enumerate(mutants, 1):
        path = os.path.join(ROOT, m.path)
        with open(path, "rb") as f: original = f.read()
        print(f"[{k}/{len(mutants)}] {m.path}:{m.line} {m.op}: {m.old} -> {m.new}", flush=True)
        t0 = time.time()
        try:
            with open(PENDING, "wb") as f: f.write(m.path.encode() + b"\n" + original)
            with open(path, "w", encoding="utf-8", newline="") as f:
                f.write(apply(m, original.decode("utf-8")))
            with BuildLock():
                t1 = time.time()
                rc, out = build()
                t2 = time.time()
                outcome = "did not build"
                if rc == 0:  # the tests of the mutant's own folder first: most mutants fail there
                    own = os.path.join(BUILD, "tests", os.path.basename(os.path.dirname(m.path)))
                    outcome = ctest(timeout, folder=own)[0]
                    if outcome == "survived": outcome = ctest(timeout)[0]
                t3 = time.time()
        finally:
            with open(path, "wb") as f: f.write(original)
            os.utime(path)  # newer than the mutant's object, so the next build compiles it again
            if os.path.exists(PENDING): os.remove(PENDING)
        results.append((m, outcome))
        print(f"    {outcome} (waited {t1 - t0:.0f} s, build {t2 - t1:.0f} s, tests {t3 - t2:.0f} s)",
              flush=True)

    with BuildLock():
        rc, _ = build()
    print("build/mutation rebuilt from the restored sources" if rc == 0 else "the final rebuild failed")
    report(results, a.seed, time.time() - start)
    return 0


def report(results, seed, seconds):
    kinds = ["killed", "survived", "did not build", "timed out"]
    rows = collections.OrderedDict((f, collections.Counter()) for f in FOLDERS)
    for m, o in results: rows[os.path.dirname(m.path)][o] += 1
    rows["total"] = sum(rows.values(), collections.Counter())
    def score(c):
        built = c["killed"] + c["survived"] + c["timed out"]
        return f"{100 * c['killed'] / built:.0f}%" if built else "-"
    print(f"\nseed {seed}, {len(results)} mutants, {seconds / 60:.0f} min")
    print(f"{'folder':<12}" + "".join(f"{k:>15}" for k in kinds) + f"{'score':>8}")
    for f, c in rows.items():
        print(f"{f:<12}" + "".join(f"{c[k]:>15}" for k in kinds) + f"{score(c):>8}")
    survivors = [m for m, o in results if o == "survived"]
    with open(os.path.join(BUILD, "survivors.txt"), "w", encoding="utf-8") as f:
        for m in survivors:
            f.write(f"{m.path}:{m.line} {m.op}: {m.old} -> {m.new}    | {m.text}\n")
    print(f"{len(survivors)} survivors listed in build/mutation/survivors.txt")


if __name__ == "__main__":
    sys.exit(main())
