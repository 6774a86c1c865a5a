# The pure code, one path without extension a line: it decides and includes nothing of Windows. It
# is built natively with every sanitizer and again for Windows; a test of the same name under
# tests/ is built for both.
set(K7_PURE
    device/bounded_copy
    device/device_state
    device/identity_generator
    device/polled
    device/shared_text
    job/pass_status
    job/planner_model
    job/time_estimate
    motion/jog_plan
    motion/line_text
    motion/location
    motion/move_plan
    link/line_assembler
    link/reply
    motion/number_text
    motion/round_positions
    motion/spindle_level
    motion/units
    settings/load_plan/pass_table
    settings/profile_name
    settings/settings_keys
    settings/settings_values
    ui/engrave_rules
    ui/format_decimal
    ui/profile_path
    ui/resource_ids
    ui/typed_number
    ui/validation
)
