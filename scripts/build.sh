# Configuring and building. To be sourced, with `root` set to the top of the repository.

# build PRESET [TARGET...]: everything where no target is named. Configures only where that is needed, so
# that a build that is up to date costs a look at the dates of the files, and says nothing.
build() {
    local preset=$1 folder=$root/build/$1
    shift
    if [[ ! -f $folder/build.ninja || $root/CMakePresets.json -nt $folder/build.ninja ]]; then
        (cd "$root" && cmake --preset "$preset")
    fi
    if [[ $(ninja -C "$folder" -n "$@" 2>/dev/null) == *"no work to do"* ]]; then
        return 0
    fi
    ninja -C "$folder" -j "$(nproc)" "$@"
}
