"""k7driver.dll from Python, by ctypes alone: 64-bit Python on Windows, 3.8 or later.

    import k7driver
    driver = k7driver.Driver("k7driver.dll")
    for identity, name in driver.find():
        with driver.connect(identity) as machine:
            print(name, machine.GetTableWidth() / 1000, "in wide")

Every operation of include/k7/driver_c.h is a method of Device under its own name; out parameters are
ctypes objects passed by byref. Device.text reads an operation that fills a buffer. What each does,
its units and its thread stand in driver_c.h. A callback must be kept alive by its owner for as long as
the device has it (Device.on_progress does so) and must not raise.
"""

import ctypes
from ctypes import (CFUNCTYPE, POINTER, c_bool, c_char_p, c_float, c_int32, c_int64, c_uint8, c_uint32,
                    c_uint64, c_void_p, c_wchar_p)

# 64-bit Windows has one calling convention, which CFUNCTYPE follows.
NotifyCallback = CFUNCTYPE(None, c_uint32, c_uint64)

# constants: begin
LINK_NONE = 0
LINK_SERIAL = 1
LINK_TCP = 2
STATUS_NOTHING = 0
STATUS_SENT = 1
STATUS_ONE_SHOT = 2
STATUS_PROBED = 3
STATUS_ARMED = 4
STATUS_REFUSED = 100
CUTTER_NONE = 0
CUTTER_MANUAL = 1
CUTTER_AUTOMATIC = 2
CUTTER_SEMI_AUTOMATIC = 3
CUTTER_AIR_Z = 4
RUN_ENGRAVING = 0
RUN_GRID = 1
RUN_BRAILLE_DRILL = 2
RUN_BRAILLE_BEAD_INSERT = 3
SPINDLE_OFF = 0
SPINDLE_ENGRAVE = 1
SPINDLE_FULL = 2
SPINDLE_INHIBIT = 3
SPINDLE_RELEASE = 4
JOG_Y_MINUS = 0
JOG_Y_PLUS = 1
JOG_X_PLUS = 2
JOG_X_MINUS = 3
JOG_Z_UP = 4
JOG_Z_DOWN = 5
JOG_FAST = 0
JOG_SLOW = 1
SETTINGS_RUN_JOB = 1
SETTINGS_CANCELLED = 2
SETTINGS_APPLIED = 101
ID_LENGTH = 16
ID_CAPACITY = 24
NAME_CAPACITY = 64
# constants: end

# Name, result, parameters after the device: in the order of the slots, which is the table's.
OPERATIONS = [
# operations: begin
    ("GetInterfaceVersion", c_uint32, []),  # 0
    ("GetTableWidthSteps", c_uint32, []),  # 1
    ("GetTableHeightSteps", c_uint32, []),  # 2
    ("Reserved3", None, []),  # 3
    ("BeginJob", c_bool, []),  # 4
    ("Reserved5", None, []),  # 5
    ("MoveTo", c_uint32, [c_uint32, c_uint32]),  # 6
    ("EngraveTo", c_uint32, [c_uint32, c_uint32]),  # 7
    ("ReturnZero8", c_uint32, []),  # 8
    ("EndJob", None, []),  # 9
    ("Reserved10", None, []),  # 10
    ("Reserved11", None, []),  # 11
    ("SetHostFlag", None, [c_uint8]),  # 12
    ("GetHostFlag", c_uint8, []),  # 13
    ("ReturnFalse14", c_bool, []),  # 14
    ("Reserved15", None, []),  # 15
    ("Reserved16", None, []),  # 16
    ("Reserved17", None, []),  # 17
    ("ReturnFalse18", c_bool, []),  # 18
    ("Reserved19", None, []),  # 19
    ("Reserved20", None, []),  # 20
    ("Reserved21", None, []),  # 21
    ("Reserved22", None, []),  # 22
    ("ReturnZero23", c_uint32, []),  # 23
    ("Reserved24", None, []),  # 24
    ("ReturnFalse25", c_bool, []),  # 25
    ("ReturnOne26", c_uint32, []),  # 26
    ("ReturnTrue27", c_bool, []),  # 27
    ("Reserved28", None, []),  # 28
    ("Reserved29", None, []),  # 29
    ("Reserved30", None, []),  # 30
    ("Reserved31", None, []),  # 31
    ("ReturnZero32", c_uint32, []),  # 32
    ("LowerCutter", c_uint32, []),  # 33
    ("LowerCutterContinue", c_uint32, []),  # 34
    ("Reserved35", None, []),  # 35
    ("QueryControllerId", c_int32, [c_wchar_p, c_int32]),  # 36
    ("GetFriendlyName", c_int32, [c_wchar_p, c_int32]),  # 37
    ("SetFriendlyName", None, [c_wchar_p]),  # 38
    ("CheckAlive", c_int32, []),  # 39
    ("ShowSettingsDialog", c_int64, [c_void_p, c_uint32, c_uint32, c_uint64, c_uint32]),  # 40
    ("SetConnectNotify", None, [c_void_p, c_uint32]),  # 41
    ("GetTableWidth", c_uint32, []),  # 42
    ("GetTableHeight", c_uint32, []),  # 43
    ("GetXStepsPerUnit", c_float, []),  # 44
    ("GetYStepsPerUnit", c_float, []),  # 45
    ("GetZStepsPerInch", c_float, []),  # 46
    ("EnableMotors", None, [c_uint8]),  # 47
    ("SetNotifyWindow", None,
     [c_void_p, c_uint32, c_uint32, c_uint32, c_uint32, c_uint32, c_uint32]),  # 48
    ("SetNotifyCallback", None, [NotifyCallback, c_uint64, c_uint32, c_uint32, c_uint32]),  # 49
    ("SyncCurrentLocation", None, [c_uint32, c_uint32, c_uint8]),  # 50
    ("GoToAsJob", None, [c_uint32, c_uint32, c_uint8]),  # 51
    ("GetCurrentPosition", None, [POINTER(c_int32), POINTER(c_int32)]),  # 52
    ("HomeCutter", None, []),  # 53
    ("StartJog", None, [c_uint32, c_uint32, c_uint32, c_uint32]),  # 54
    ("SetPlungeHold", None, [c_uint8]),  # 55
    ("HomeTable", c_uint32, []),  # 56
    ("GetMachinePosition", None, [POINTER(c_int32), POINTER(c_int32), POINTER(c_int32)]),  # 57
    ("GetTableHome", None, [POINTER(c_int32), POINTER(c_int32), POINTER(c_int32)]),  # 58
    ("FindCutterHome", c_bool, []),  # 59
    ("Reserved60", None, []),  # 60
    ("SetSpindle", None, [c_uint32]),  # 61
    ("ReadSwitches", None,
     [POINTER(c_uint8), POINTER(c_uint8), POINTER(c_uint8), POINTER(c_uint8)]),  # 62
    ("StartSpindleRamp", c_bool, [c_int32, c_void_p, c_uint32, c_uint32]),  # 63
    ("GetSpindleValue", c_uint32, []),  # 64
    ("GetScissors", c_float, []),  # 65
    ("GetEngraveByColor", c_uint8, []),  # 66
    ("HasSpindle", c_uint8, []),  # 67
    ("SetColorTableIndex", None, [c_uint32]),  # 68
    ("GetColorTableIndex", c_uint32, []),  # 69
    ("EnsureTableHome", c_uint64, [c_void_p]),  # 70
    ("HasBeadInsertTool", c_uint32, []),  # 71
    ("GetBeadToolOffsetX", c_int32, []),  # 72
    ("GetBeadToolOffsetY", c_int32, []),  # 73
    ("SetBeadToolOffset", c_uint32, [c_uint32, c_uint32]),  # 74
    ("MoveBeadToolTo", c_uint32, [c_uint32, c_uint32]),  # 75
    ("AttachLink", None, [c_void_p, c_uint32, c_wchar_p]),  # 76
    ("IsConnected", c_uint8, []),  # 77
    ("ResetControllerId", None, []),  # 78
    ("SendLine", None, [c_char_p]),  # 79
    ("LoadSettings", None, []),  # 80
    ("GetSettingsFilePath", c_uint32, [c_wchar_p, c_int32]),  # 81
    ("GetCameraId", c_int64, [c_wchar_p, c_int32]),  # 82
    ("SetCameraId", None, [c_wchar_p]),  # 83
    ("ReturnOne84", c_uint32, []),  # 84
    ("GetPassCount", c_uint32, []),  # 85
    ("StartPass", c_uint32, [c_uint32, c_uint32, c_uint32, c_wchar_p, c_int32]),  # 86
    ("IsDiodePointerFitted", c_uint32, []),  # 87
    ("GetDiodeOffsetX", c_int32, []),  # 88
    ("GetDiodeOffsetY", c_int32, []),  # 89
    ("SetDiodeOffset", c_uint32, [c_uint32, c_uint32]),  # 90
    ("MoveDiodeTo", c_uint32, [c_uint32, c_uint32]),  # 91
    ("GetMaterialLibraryFolder", c_uint32, [c_wchar_p, c_int32]),  # 92
    ("GetTempHomeLibraryFolder", c_uint32, [c_wchar_p, c_int32]),  # 93
    ("GetCurrentPass", c_uint32, []),  # 94
    ("GetRoundMode", c_uint32, []),  # 95
    ("SetRoundMode", None, [c_uint32]),  # 96
    ("SetGridMode", None, [c_uint32]),  # 97
    ("GetGridMode", c_uint32, []),  # 98
    ("ReturnZero99", c_uint32, []),  # 99
    ("ReturnZero100", c_uint32, []),  # 100
    ("ReturnZero101", c_uint32, []),  # 101
    ("ReturnZero102", c_uint32, []),  # 102
    ("ReturnZero103", c_uint32, []),  # 103
    ("ReturnZero104", c_uint32, []),  # 104
    ("Reserved105", None, []),  # 105
    ("ReturnTrue106", c_bool, []),  # 106
    ("Reserved107", None, []),  # 107
    ("ReturnFalse108", c_bool, []),  # 108
    ("Reserved109", None, []),  # 109
    ("ReturnTrue110", c_bool, []),  # 110
    ("Reserved111", None, []),  # 111
    ("GetRecordReserved", c_uint64, []),  # 112
    ("Reserved113", None, []),  # 113
    ("IsRoundModeActive", c_int32, []),  # 114
    ("SetHostText", None, [c_wchar_p]),  # 115
    ("GetHostText", c_int32, [c_wchar_p, c_int32]),  # 116
    ("TravelTo", c_uint32, [c_uint32, c_uint32]),  # 117
    ("IsAirZ", c_int32, []),  # 118
    ("EstimateJobTime", c_uint32, [POINTER(c_uint32), c_uint32]),  # 119
    ("SetReaderAlive", None, [c_uint8]),  # 120
    ("GetReaderAlive", c_uint8, []),  # 121
    ("GetLinkType", c_uint32, []),  # 122
    ("GetPortName", c_int32, [c_wchar_p, c_int32]),  # 123
    ("GetLinkHandle", c_void_p, []),  # 124
    ("DeleteSelf", c_void_p, [c_uint32]),  # 125
# operations: end
]


class Operations(ctypes.Structure):
    """The table of a device: a function pointer for each operation."""
    _fields_ = [(name, CFUNCTYPE(result, c_void_p, *parameters))
                for name, result, parameters in OPERATIONS]


class Device:
    """A connected machine. Release it, or use it in a with statement."""

    def __init__(self, driver, address):
        self._driver = driver
        self._address = address
        self._callback = None
        table = ctypes.cast(address, POINTER(POINTER(Operations))).contents.contents
        for name, _, _ in OPERATIONS:
            setattr(self, name, self._bound(getattr(table, name)))

    def _bound(self, function):
        def call(*arguments):
            if not self._address:
                raise ValueError("the machine has been released")
            return function(self._address, *arguments)
        return call

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.release()

    def release(self):
        """Ends the connection; a second call does nothing."""
        address, self._address = self._address, None
        if address:
            self._driver.library.ReleaseController(address)

    def text(self, operation, capacity=NAME_CAPACITY):
        """The text that an operation such as GetFriendlyName copies into a buffer."""
        buffer = ctypes.create_unicode_buffer(capacity)
        getattr(self, operation)(ctypes.cast(buffer, c_wchar_p), capacity)
        return buffer.value

    def on_progress(self, function, queued=1, started=2, finished=3):
        """Lets function(message, context) be called, on the driver's reader thread, for each move."""
        callback = NotifyCallback(function) if function else NotifyCallback()
        self.SetNotifyCallback(callback, 0, queued, started, finished)
        self._callback = callback


class Driver:
    """The loaded module. `library` is the path of k7driver.dll or, for tests, what stands for it."""

    def __init__(self, library):
        self.library = ctypes.CDLL(library) if isinstance(library, str) else library
        self._declare("EnumerateControllers", c_int32)
        self._declare("GetControllerInfo", None, c_int32, c_wchar_p, c_wchar_p, c_int32)
        self._declare("ConnectToController", c_void_p, c_wchar_p)
        self._declare("ReleaseController", None, c_void_p)

    def _declare(self, name, result, *parameters):
        function = getattr(self.library, name)
        function.restype, function.argtypes = result, parameters

    def find(self):
        """Identity and name of each controller that answers; takes seconds when there are many ports."""
        found = []
        for index in range(self.library.EnumerateControllers()):
            identity = ctypes.create_unicode_buffer(NAME_CAPACITY)
            name = ctypes.create_unicode_buffer(NAME_CAPACITY)
            self.library.GetControllerInfo(index, ctypes.cast(identity, c_wchar_p),
                                           ctypes.cast(name, c_wchar_p), NAME_CAPACITY)
            found.append((identity.value, name.value))
        return found

    def connect(self, identity):
        """The machine with this identity; raises ConnectionError when it does not answer."""
        address = self.library.ConnectToController(identity)
        if not address:
            raise ConnectionError(f"controller {identity} was not found or does not answer")
        return Device(self, address)
