#!/bin/sh
# SPDX-License-Identifier: MIT
exec /usr/lib/kiva/kiva-tools /sbin/services.sh "$@"
