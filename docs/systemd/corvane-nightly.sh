#!/bin/sh
# Downloads the readings since the last file into a new file and checks them. After a missed night the
# next one also fetches the missed readings.
set -eu
recorder="--port 1 --type TH4"   # change this and the limits, here channel 1 from 2 to 8 degrees
limits="--limit 1:8:2"
mkdir -p ~/corvane
cd ~/corvane
from=2000-01-01
last=$(ls | grep '^20.*\.qlx$' | tail -n 1)
if [ -n "$last" ]; then
  end=$(corvane-cli stats "$last" | sed -n 's/^End Time *//p')
  # Summer time can shift a recorder's times by an hour.
  from=$(date -u -d "$end 1 hour ago" '+%F %T')
fi
# The name is the same every night, so that a broken download is resumed.
corvane-cli download $recorder --from "$from" -o new.qlx
new=$(date +%Y-%m-%d_%H%M%S).qlx
mv new.qlx "$new"
corvane-cli stats "$new" $limits
