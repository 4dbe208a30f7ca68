# Steps of a script and what each took, for whoever waits for it. Source this file; then
#
#   steps=3
#   step "what is done" COMMAND [ARGUMENT...]    says which step it is and runs it; the script ends when it fails
#   account                                      what each step took: wall clock, and processor time of all cores

steps_begun=0
steps_done=()
steps_cost=$(mktemp)
trap 'rm -f "$steps_cost"' EXIT

step() { # TITLE COMMAND...
  local title=$1 wall user system
  local TIMEFORMAT='%R %U %S' LC_NUMERIC=C
  shift
  printf '[%d/%d] %s\n' $((++steps_begun)) "$steps" "$title"
  # The command's own messages go where they would without `time`.
  { time "$@" 2>&3; } 3>&2 2>"$steps_cost" || exit
  read -r wall user system < <(tail -n 1 "$steps_cost")
  steps_done+=("$wall $user $system $title")
}

account() {
  printf '%s\n' "${steps_done[@]}" | awk '
    function clock(seconds) {
      seconds = int(seconds + 0.5)
      return seconds < 60 ? seconds " s" : int(seconds / 60) " min " seconds % 60 " s"
    }
    function line(wall, processor, title) {
      printf "%12s  (%s of processor time)  %s\n", clock(wall), clock(processor), title
    }
    {
      title = $0
      sub(/^[^ ]+ [^ ]+ [^ ]+ /, "", title)
      line($1, $2 + $3, title)
      wall += $1
      processor += $2 + $3
    }
    END { if (NR > 1) line(wall, processor, "in all") }'
}
