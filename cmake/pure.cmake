# The pure code, one path without extension a line: it decides and includes nothing of Windows. It
# is built natively with every sanitizer and again for Windows; a test of the same name under
# tests/ is built for both.
set(K7_PURE
    base/arithmetic
    base/bounded_copy
    base/format_decimal
    base/number_text
    base/parse_number
    base/polled
    base/shared_text
    base/short_lock
    base/trace_text
    device/device_state
    device/guarded
    device/per_axis
    settings/encodings
    settings/row
    settings/schema
    settings/profile_name
    link/commands
    link/line_assembler
    link/reply
    motion/axes
    motion/cutter_mode
    motion/move_plan
    motion/round_positions
    motion/spindle_level
    job/jog_plan
    job/pass_status
    job/planner_model
    job/time_estimate
    session/identity_generator
    session/pass_table
    ui/resource_ids
    ui/settings/engrave_rules
    ui/settings/validation
)
