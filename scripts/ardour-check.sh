#!/usr/bin/env bash
# Loads the LV2 plug-in in Ardour's headless Lua session tool: makes a session with a stereo
# track, puts the equaliser on it, sets controls and a factory preset, saves, reopens and checks
# that the state came back. Not part of the test suite (Ardour is a large package):
#   sudo apt-get install ardour && scripts/ardour-check.sh
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:-$root/build/release}"
lua_tool="$(command -v ardour7-lua || command -v ardour8-lua || true)"
[ -n "$lua_tool" ] || { echo "ardour-check: Ardour's ardour*-lua is not installed" >&2; exit 2; }
[ -d "$build/lv2/varnel4-lin-phase-eq.lv2" ] || { echo "ardour-check: build the tree first" >&2; exit 2; }

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
export LV2_PATH="$build/lv2:/usr/lib/lv2" HOME="$work" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data"
cat >"$work/check.lua" <<LUA
local uri = "urn:orvane-studio:varnel4-lin-phase-eq"
-- Lua's parameter numbers count the four control outputs before the 37 slots.
local function slot(n) return n + 4 end
create_session("$work/session", "check", 48000)
local track = Session:new_audio_track(2, 2, nil, 1, "EQ", ARDOUR.PresentationInfo.max_order,
                                      ARDOUR.TrackMode.Normal, true):front()
local eq = ARDOUR.LuaAPI.new_plugin(Session, uri, ARDOUR.PluginType.LV2, "")
assert(not eq:isnil(), "Ardour cannot load the plug-in")
track:add_processor_by_index(eq, 0, nil, true)
local preset = eq:to_insert():plugin(0):preset_by_label("Vocals/Air")
assert(preset, "no factory preset Vocals/Air")
assert(eq:to_insert():plugin(0):load_preset(preset), "the preset does not load")
assert(ARDOUR.LuaAPI.set_processor_param(eq, slot(12), 4.5))
assert(ARDOUR.LuaAPI.set_processor_param(eq, slot(14), 1))
Session:save_state("", false, false, false, false, false)
close_session()

load_session("$work/session", "check")
local found = false
for route in Session:get_routes():iter() do
  local proc = route:nth_plugin(0)
  if not proc:isnil() and proc:display_name() == "Varnel4 Lin Phase EQ" then
    found = true
    local gain = ARDOUR.LuaAPI.get_processor_param(proc, slot(12), true)
    local active = ARDOUR.LuaAPI.get_processor_param(proc, slot(14), true)
    print(string.format("reopened: Band 3 Gain %.2f, Band 3 Active %.0f", gain, active))
    assert(gain == 4.5 and active == 1, "the state did not come back")
  end
end
assert(found, "the reopened session has no equaliser")
close_session()
print("ardour-check: passed")
LUA
output="$("$lua_tool" "$work/check.lua" 2>&1 || true)"
grep -v "^Blend Optimizaions$" <<<"$output"
grep -q "^ardour-check: passed" <<<"$output"
