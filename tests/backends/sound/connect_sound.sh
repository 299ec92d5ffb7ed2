#!/bin/sh
# Connects the camera's sound to the sink and to a recorder named test-recorder, which is all that
# the test needs of a session manager.
set -eu

id_of() {
    tries=0
    while [ "$tries" -lt 50 ]; do
        id=$(pw-cli ls Node | awk -v name="\"$1\"" \
            '$1 == "id" { id = $2 + 0 } $1 == "node.name" && $3 == name { print id }')
        [ -z "$id" ] || break
        tries=$((tries + 1))
        sleep 0.1
    done
    echo "$id"
}

open_ports() {
    format="{mediaType: audio, mediaSubtype: raw, format: F32P, rate: 48000, channels: 2,
        position: [FL, FR]}"
    pw-cli set-param "$(id_of "$1")" PortConfig \
        "{direction: $2, mode: dsp, format: $format}" >/dev/null
}

open_ports kivo-camera Output
open_ports test-sink Input
open_ports test-recorder Input
for channel in FL FR; do
    # The ports come a moment after they are asked for.
    for target in test-sink:playback_$channel test-recorder:input_$channel; do
        tries=0
        until pw-link "kivo-camera:output_$channel" "$target" 2>/dev/null; do
            tries=$((tries + 1))
            [ "$tries" -lt 50 ]
            sleep 0.1
        done
    done
done
