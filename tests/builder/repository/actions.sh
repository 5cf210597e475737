# What the scripts of the cases may say besides git and the shell. A script runs in DIR/source,
# which the project in DIR/project reads.
set -eu
unset GIT_DIR GIT_WORK_TREE GIT_INDEX_FILE || true
export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_NOSYSTEM=1
# Nothing that git would do beside the work.
export GIT_CONFIG_COUNT=3 GIT_CONFIG_KEY_0=maintenance.auto GIT_CONFIG_VALUE_0=false \
    GIT_CONFIG_KEY_1=core.fsync GIT_CONFIG_VALUE_1=none \
    GIT_CONFIG_KEY_2=protocol.file.allow GIT_CONFIG_VALUE_2=always
export GIT_AUTHOR_NAME=Ada GIT_AUTHOR_EMAIL=ada@example.org
export GIT_COMMITTER_NAME=Ada GIT_COMMITTER_EMAIL=ada@example.org

# on TIME: when the next commits and tags are made.
on() {
    export GIT_AUTHOR_DATE="$1" GIT_COMMITTER_DATE="$1"
}
on 2024-05-05T12:00:00+0000

init() {
    git -c init.defaultBranch=main init -q --template= "$@"
}

# put FILE=TEXT...
put() {
    for file in "$@"; do
        mkdir -p "$(dirname "${file%%=*}")"
        printf '%s' "${file#*=}" >"${file%%=*}"
    done
}

# commit FILE=TEXT...: with none an empty one.
commit() {
    put "$@"
    git add -A
    git commit -q --allow-empty -m change
}

# tag NAME...: light ones, of what is there now.
tag() {
    for name in "$@"; do git tag "$name"; done
}

# annotated NAME TIME [OBJECT]
annotated() {
    GIT_COMMITTER_DATE=$2 git tag -a -m release "$1" ${3:+"$3"}
}

# built LABEL TAG [COMMIT]: leaves the record of a build.
built() {
    put "$DIR/project/versions/$1/.lumenfold-built={\"format\": 1, \"tag\": \"$2\",
        \"commit\": \"${3-$(git rev-parse "$2^{commit}")}\"}"
}

# declare LABEL [DATE], exclude LABEL, source PATH: what the project's configuration says.
declared= excluded= source_path=../source
declare() {
    declared="$declared${declared:+,}{\"label\": \"$1\", \"release_date\": \"${2-}\"}"
}
exclude() {
    excluded="$excluded${excluded:+,}\"$1\""
}
source() {
    source_path=$1
}

write_project() {
    [ -e "$DIR/project/.lumenfold-project" ] ||
        put "$DIR/project/.lumenfold-project={\"build\": {\"source_path\": \"$source_path\"},
            \"versions\": [$declared], \"versions_excluded\": [$excluded]}"
}
