#!/bin/bash
# The pre-commit hook, in a repository of its own: what is staged counts, what is not does not.
set -uo pipefail
ROOT=$(cd "$(dirname "$0")/../.." && pwd)
WORK=$(mktemp -d)
readonly ROOT WORK
trap 'rm -rf "$WORK"' EXIT
# A repository whose hook runs this test has told git where it is.
while read -r name; do unset "$name"; done < <(git rev-parse --local-env-vars)
export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_SYSTEM=/dev/null
export GIT_AUTHOR_NAME=test GIT_AUTHOR_EMAIL=test@example.com
export GIT_COMMITTER_NAME=test GIT_COMMITTER_EMAIL=test@example.com
passed=0 failed=0

readonly GOOD='int Answer() {\n  return 42;\n}\n' BAD='int Answer( )\n{ return 42; }\n'

# commits NAME: what is staged goes through.
commits() {
  if git commit -q -m change >"$WORK/said" 2>&1; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "FAILED: $1: refused"
    sed 's/^/  /' "$WORK/said"
  fi
}

# refuses NAME TEXT: what is staged is refused with the text, and unstaged for the next test.
refuses() {
  if git commit -q -m change >"$WORK/said" 2>&1; then
    failed=$((failed + 1))
    echo "FAILED: $1: went through"
  elif ! grep -qF -- "$2" "$WORK/said"; then
    failed=$((failed + 1))
    echo "FAILED: $1: refused without '$2'"
    sed 's/^/  /' "$WORK/said"
  else
    passed=$((passed + 1))
  fi
  git reset -q --hard
}

mkdir "$WORK/repo" && cd "$WORK/repo" || exit 1
git init -q
mkdir -p tests/lint src
cp -r "$ROOT/.githooks" "$ROOT/.clang-format" .
# A lint that looks at the tree that it lies in, as those of the project do.
cat >tests/lint/no_tabs.py <<'PYTHON'
import pathlib, sys
root = pathlib.Path(__file__).resolve().parents[2]
bad = [p.name for p in root.glob("src/*") if "\t" in p.read_text()]
print("tabs in", bad)
sys.exit(1 if bad else 0)
PYTHON
touch src/list.txt
git config core.hooksPath .githooks
git add .
commits "the first commit"

# shellcheck disable=SC2059  # the texts are formats
put() { printf "$2" >"$1"; }

put src/answer.cpp "$BAD"; git add src
refuses "badly formatted C++" "src/answer.cpp"
put src/answer.cpp "$GOOD"; git add src
commits "well formatted C++"

put src/answer.cpp "$BAD"; git add src; put src/answer.cpp "$GOOD"
refuses "badly formatted when staged, put right since" "src/answer.cpp"
put src/answer.h "$GOOD"; git add src; put src/answer.h "$BAD"
commits "well formatted when staged, spoilt since"
git checkout -q .
put src/left_out.cpp "$BAD"; put src/list.txt 'one\n'; git add src/list.txt
commits "a badly formatted file that is not staged"
rm src/left_out.cpp

put src/list.txt 'one\ttwo\n'; git add src
refuses "a lint that fails" "tabs in ['list.txt']"
put src/list.txt 'one\ttwo\n'; put src/other.txt 'two\n'; git add src/other.txt
commits "a fault that a lint would find, not staged"
git checkout -q .

# shellcheck disable=SC2016  # the variable is the script's
put src/go.sh '#!/bin/bash\ncd $1\n'; git add src
refuses "a script with a fault" "SC2086"
git rm -q src/answer.cpp
commits "a deletion"
put "src/with blank.cpp" "$BAD"; git add src
refuses "a name with a blank in it" "src/with blank.cpp"

mkdir "$WORK/bin"
for tool in basename bash git grep mktemp python3 rm sed; do ln -s "$(command -v $tool)" "$WORK/bin/"; done
put src/answer.h "$BAD"; git add src
PATH=$WORK/bin refuses "C++ where there is no clang-format" "clang-format is not installed"

echo "pre_commit_test: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
