#!/usr/bin/env bash
# Renames the functions and methods of the C++ code in src/, tests/, bench/ and
# fuzz/ to camelCase (saveCurrentPipeType(), copyBuffer()) with clang-tidy's
# readability-identifier-naming check; types, variables, constants,
# enumerators and macros keep their names. Can be run again at any time: code
# that is already renamed stays as it is.
#   ./scripts/camelcase.sh
# 1. configures build/tidy for its compile_commands.json (the fuzz targets
#    too, nothing is built);
# 2. has clang-tidy export the renames for every translation unit, the
#    project's own headers included;
# 3. drops with scripts/camelcase.py every rename whose new name would clash
#    (a member of the class, of a Qt base class or of a derived class, a name
#    of the namespace, a local name where it is called), of functions with C
#    linkage, of names in a macro's body, of calls that clang cannot resolve
#    (templates) and of what Qt's meta-object system calls by name; functions
#    that a library calls by name are left alone by the check's IgnoredRegexp;
# 4. applies what remains with clang-apply-replacements and formats the
#    changed files with clang-format.
# What stays as it is, and why, is printed and kept in
# build/tidy/camelcase-kept.txt.
set -euo pipefail
source "$(dirname "$0")/deps.sh"
QORVALE_PACKAGES+=("${QORVALE_RENAME_PACKAGES[@]}")
qorvale_install_deps

root=$QORVALE_ROOT
build="$root/build/tidy"
jobs=${CAMELCASE_JOBS:-$(nproc)}
start=$SECONDS

# Functions that a library calls by their name: main, libFuzzer's entry
# points, the sanitizers' hooks, GoogleTest's fixture hooks and printer,
# Google Benchmark's functions (their names are the benchmarks' names).
library_names='^(main|LLVMFuzzer[A-Za-z]*|__.*|BM_.*|PrintTo|SetUp|TearDown|SetUpTestSuite|TearDownTestSuite|SetUpTestCase|TearDownTestCase|TestBody)$'
escaped_root=$(printf '%s' "$root" | sed 's/[][\.*^$+?(){}|/]/\\&/g')
source_regex="^$escaped_root/(src|tests|bench|fuzz)/"
config="{Checks: '-*,readability-identifier-naming',
  HeaderFilterRegex: '$source_regex',
  CheckOptions: [
    {key: readability-identifier-naming.FunctionCase, value: camelBack},
    {key: readability-identifier-naming.MethodCase, value: camelBack},
    {key: readability-identifier-naming.FunctionIgnoredRegexp, value: '$library_names'},
    {key: readability-identifier-naming.MethodIgnoredRegexp, value: '$library_names'}]}"

echo "camelcase: configuring $build"
mkdir -p "$build"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_EXPORT_COMPILE_COMMANDS=ON \
  -DQORVALE_BUILD_TESTS=ON -DQORVALE_BUILD_BENCH=ON -DQORVALE_FUZZ=ON >"$build/camelcase-configure.log" 2>&1 ||
  { cat "$build/camelcase-configure.log"; exit 1; }

fixes="$build/camelcase-fixes.yaml"
apply="$build/camelcase-apply"
rm -rf "$fixes" "$apply"
mkdir -p "$apply"
echo "camelcase: clang-tidy over every translation unit ($jobs at a time)"
# A translation unit that clang cannot compile still gives its renames; its
# errors are shown below.
run-clang-tidy-14 -p "$build" -j "$jobs" -quiet -config="$config" -export-fixes "$fixes" \
  "$source_regex" >"$build/camelcase-tidy.log" 2>&1 || true
[ -f "$fixes" ] || { tail -n 40 "$build/camelcase-tidy.log"; exit 1; }
grep -a 'error:' "$build/camelcase-tidy.log" | sed 's/\x1b\[[0-9;]*m//g' | sort -u |
  sed 's/^/camelcase: clang: /' || true

echo "camelcase: checking the new names"
CAMELCASE_JOBS=$jobs CAMELCASE_RESOURCE_DIR=$(clang-14 -print-resource-dir 2>/dev/null ||
  echo /usr/lib/llvm-14/lib/clang/14.0.6) \
  /usr/bin/python3 "$root/scripts/camelcase.py" filter "$root" "$build" "$fixes" \
  "$apply/fixes.yaml" | tee "$build/camelcase-kept.txt"

# The files that the renames touch, and what they hold before.
mapfile -t touched <"$apply/fixes.yaml.files"
declare -A before=()
for f in "${touched[@]}"; do before[$f]=$(sha1sum "$f" | cut -d' ' -f1); done

clang-apply-replacements-14 "$apply"
changed=()
for f in "${touched[@]}"; do
  [ "$(sha1sum "$f" | cut -d' ' -f1)" != "${before[$f]}" ] && changed+=("$f")
done
if [ ${#changed[@]} -gt 0 ]; then clang-format-14 -i "${changed[@]}"; fi
echo "camelcase: ${#changed[@]} files changed in $((SECONDS - start)) s"
