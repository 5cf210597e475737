# What the scripts of the cases may say besides the shell and tests/builder/repository/actions.sh. A
# script runs in an empty folder.
. "$ROOT/tests/builder/repository/actions.sh"
set +e
export SOURCE_DATE_EPOCH=1771146764
unset NO_COLOR

# cli ARGUMENT...: runs the program; its exit code is told if it is not 0.
cli() {
    "$CLI" "$@" >said 2>&1 </dev/null
    code=$?
    sed "s|$PWD|DIR|g; s/, in [0-9]* ms$//" said
    [ $code = 0 ] || echo "= $code"
}

# a_site NAME...: the folder "site" with these projects, each with a source in a repository. Its
# pages are the README, a topic and the license.
a_site() {
    projects=
    for name in "$@"; do
        mkdir -p "site/sources/$name" declared
        (cd "site/sources/$name" && init && commit "README.md=# $name" LICENSE=Free \
            'guides/start.md=Begin here.' \
            '.lumenfold={"format": 1, "build": {"readme": "README.md", "license": "LICENSE", "topics":
                [{"slug": "start", "label": "Start", "source": "guides/start.md"}]}}')
        : >"declared/$name"
        write_project_of "$name"
        projects="$projects${projects:+, }{\"config\": \"./projects/$name/.lumenfold-project\"}"
    done
    put "site/.lumenfold-site={\"format\": 1, \"title\": \"Tidewater\", \"projects\": [$projects]}"
}

# release NAME TAG [FILE=TEXT...]: commits, tags and declares.
release() {
    released=$1 tagged=$2
    shift 2
    (cd "site/sources/$released" && commit "$@" && git tag "$tagged")
    label=${tagged#v}
    echo "{\"label\": \"${label%.*}\", \"release_date\": \"\"}" >>"declared/$released"
    write_project_of "$released"
}

write_project_of() {
    put "site/projects/$1/.lumenfold-project={\"format\": 1, \"slug\": \"$1\", \"name\": \"$1\",
        \"build\": {\"source_path\": \"../../sources/$1\"}, \"versions\": [$(paste -sd, "declared/$1")]}"
}

# pages FOLDER: the HTML files in it.
pages() {
    (cd "$1" && find . -name '*.html' | sort | sed 's|^\./||')
}

# same FOLDER FOLDER: tells the files that differ, but for the builder's own list.
same() {
    diff -r -q -x .lumenfold-output -x .lumenfold-notes "$1" "$2" && echo same
}

# settle: waits until files changed last can no longer change without a new time.
settle() {
    sleep 0.06
}
