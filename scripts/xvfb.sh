# A virtual display of a script's own. Sourced, then:
#
#   xvfb_demarrer NAME [LOG]
#
# starts Xvfb on a display number that the server picks itself among the free
# ones (-displayfd: no race with another script looking for a free number),
# waits until it is ready, exports DISPLAY and unsets WAYLAND_DISPLAY. The
# server's process id is left in XVFB_PID; the caller kills it when done.
# NAME begins the message when the server does not start; LOG receives the
# server's own output (default: none).
xvfb_demarrer() {
  _xvfb_numero=$(mktemp)
  Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp \
    3>"$_xvfb_numero" >"${2:-/dev/null}" 2>&1 &
  XVFB_PID=$!
  _xvfb_essais=0
  until [ -s "$_xvfb_numero" ]; do
    _xvfb_essais=$((_xvfb_essais + 1))
    if [ "$_xvfb_essais" -ge 200 ] || ! kill -0 "$XVFB_PID" 2>/dev/null; then
      kill "$XVFB_PID" 2>/dev/null || true
      rm -f "$_xvfb_numero"
      echo "$1: Xvfb did not start" >&2
      return 1
    fi
    sleep 0.1
  done
  DISPLAY=":$(head -n 1 "$_xvfb_numero")"
  export DISPLAY
  unset WAYLAND_DISPLAY
  rm -f "$_xvfb_numero"
}
