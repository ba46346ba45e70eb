#!/bin/sh
# @MARK@
# The items come as URIs, one on each line.
set -f
IFS='
'
exec @PROGRAM@ @OPTION@ -- $@URIS@
