# The build tree of what is shipped, for scripts that build it: sourced, with "root" set.
tree=$root/build/release

# A tree that was configured for a checkout at another place would build from there.
is_configured() {
    [[ -e $tree/build.ninja ]] && grep -qxF -- "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$tree/CMakeCache.txt"
}

configure() {
    rm -rf -- "$tree"
    cmake -S "$root" --preset release -DVEILKEEP_TESTS=OFF -DVEILKEEP_BENCHMARKS=OFF
}

is_up_to_date() {
    local plan
    plan=$(ninja -C "$tree" -n bundle 2>/dev/null) && [[ $plan == *"no work to do"* ]]
}

# "$@": what scripts/setup is to install.
build() {
    "$root/scripts/setup" "$@"
    is_configured || configure
    is_up_to_date || cmake --build "$tree" --target bundle
}

# Runs it while no other script builds or packs the tree.
alone() {
    local lock
    mkdir -p -- "$root/build"
    exec {lock}>"$root/build/.lock"
    flock "$lock"
    "$@"
    exec {lock}>&-
}
