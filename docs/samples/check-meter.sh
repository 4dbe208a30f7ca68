#!/bin/sh
# Is the meter still set up as it was left? Compares it with a snapshot and keeps what differs, as JSON.
#
#   check-meter.sh FOLDER REFERENCE DIFFERENCES
#
# FOLDER holds VLT.ini. The first run makes REFERENCE. VLT names the program when it is not in the path. The exit
# status is that of `compare`: 0 equal, 1 different, 2 could not tell.
vlt=${VLT:-vlt}
folder=$1 reference=$2 differences=$3

if [ ! -e "$reference" ]; then
  "$vlt" --dir "$folder" snapshot "$reference" >/dev/null || exit 2
fi

"$vlt" --json --dir "$folder" compare "$reference" meter >"$differences"
status=$?
case $status in
0) echo "as it was left" ;;
1) echo "different: $(grep -c '"state":"different"' "$differences") parameters, see $differences" ;;
*) echo "could not tell: $(grep '"event":"trouble"' "$differences")" ;;
esac
exit $status
