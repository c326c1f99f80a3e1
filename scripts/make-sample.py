#!/usr/bin/env python3
"""Writes samples/full.ko3 and samples/full.values.txt.

The sample is made by hand from the byte tables of the read telegrams: every value is
given here with its telegram, offset and encoding, independent of the tool's getters.
full.values.txt lists, row by row in the order of the logged data objects, the value the
tool's dump must print. A test compares the two.

Run from the project folder: python3 scripts/make-sample.py
"""

import struct

SERIAL = 1234567
STAMP = (20, 7, 7, 4, 12, 34, 56)  # 2007-07-04 12:34:56

SIZES = {1: 19, 2: 202, 3: 211, 4: 54, 5: 421}
data = {k: bytearray(n) for k, n in SIZES.items()}
expected = {}  # (getter, args) -> text


def put(tele, offset, raw):
    data[tele][offset:offset + len(raw)] = raw


def f32(getter, tele, offset, value, args=()):
    put(tele, offset, struct.pack('>f', value))
    expected[(getter, args)] = text_of(value)


def u32(getter, tele, offset, value, args=()):
    put(tele, offset, struct.pack('>I', value))
    expected[(getter, args)] = str(value)


def u16(getter, tele, offset, value, args=()):
    put(tele, offset, struct.pack('>H', value))
    expected[(getter, args)] = str(value)


def i16(getter, tele, offset, value, args=()):
    put(tele, offset, struct.pack('>h', value))
    expected[(getter, args)] = str(value)


def u8(getter, tele, offset, value, args=()):
    data[tele][offset] = value
    expected[(getter, args)] = str(value)


def i8(getter, tele, offset, value, args=()):
    data[tele][offset] = value & 0xFF
    expected[(getter, args)] = str(value)


def flag(getter, tele, offset, bit, value, args=()):
    if value:
        data[tele][offset] |= 1 << bit
    expected[(getter, args)] = str(value)


def state(getter, tele, offset, low_bit, value, args=()):
    data[tele][offset] |= value << low_bit
    expected[(getter, args)] = str(value)


def number_text(getter, tele, offset, parts, args=()):
    """Software number (uint16, byte, byte) or parameter set (uint16, uint16, byte)."""
    a, b, c = parts
    if getter.endswith('SoftwareNum'):
        put(tele, offset, struct.pack('>HBB', a, b, c))
        expected[(getter, args)] = '%04d.%02d.%03d' % (a, b, c)
    else:
        put(tele, offset, struct.pack('>HHB', a, b, c))
        expected[(getter, args)] = '%04d.%03d.%03d' % (a, b, c)


def text_of(value):
    text = repr(float(value))
    return text[:-2] if text.endswith('.0') else text


# Telegram 2: air flow, fans, localisation.
T = 2
f32('DET_GetFlowValue', T, 8, 2.75)
f32('DET_GetFlowRefValue', T, 12, 2.5)
f32('DET_GetAirTemperature', T, 16, 21.25)
i16('DET_GetAltitude', T, 20, -100)
u16('DET_GetAirPressureSetPoint', T, 22, 1013)
u16('DET_GetAirFlowFailureDelayMax', T, 24, 3600)
u16('DET_GetAirFlowFailureDelayMin', T, 26, 30)
u16('DET_GetAirFlowFailureDelaySetPoint', T, 28, 100)
u8('DET_GetStaticFlowDevMax', T, 30, 95)
u8('DET_GetStaticFlowDevMin', T, 31, 10)
u8('DET_GetStaticFlowDevSetPoint', T, 32, 30)
for bit, (name, value) in enumerate([('DET_GetFlowInitIsActive', 0), ('DET_GetHasFlow', 1),
                                     ('DET_GetFlowShouldBeOn', 1), ('DET_GetFlowIsOn', 0),
                                     ('DET_GetHasDynFlow', 1), ('DET_GetDynFlowShouldBeOn', 0),
                                     ('DET_GetDynFlowIsOn', 1)], start=1):
    flag(name, T, 33, bit, value)
for bit, (name, value) in enumerate([('DET_GetFlowInitAborted', 1), ('DET_GetAirFlowError', 0),
                                     ('DET_GetFlowDynDevPlus', 1), ('DET_GetFlowDynDevMinus', 0),
                                     ('DET_GetFlowStatDevPlus', 0), ('DET_GetFlowStatDevMinus', 1),
                                     ('DET_GetTemperatureIsHigh', 0),
                                     ('DET_GetTemperatureIsLow', 1)]):
    flag(name, T, 34, bit, value)
fans = [('DET_GetUFanMax', 13500), ('DET_GetUFanMin', 9000), ('DET_GetUFanSetPoint', 10500),
        ('DET_GetFanVoltage', 10400), ('DET_GetSuckFanLrnVoltage', 11000),
        ('DET_GetBlowFanLrnVoltage', 12000), ('DET_GetSuckFanLocVoltage', 11100),
        ('DET_GetBlowFanVoltage', 12100), ('DET_GetBlowTime', 45), ('DET_GetBlowLrnTime', 300)]
for i, (name, value) in enumerate(fans):
    u16(name, T, 45 + 2 * i, value)
for hole in range(1, 6):
    u16('DET_GetSuckTime%dMax' % hole, T, 65 + 4 * (hole - 1), 1000 * hole + 111)
    u16('DET_GetSuckTime%dMin' % hole, T, 67 + 4 * (hole - 1), 1000 * hole - 99)
u16('DET_GetFirePlaceSuckTime', T, 85, 2345)
u8('DET_GetFirePlace', T, 87, 3)
for bit, (name, value) in enumerate([('DET_GetHasSingleHoleDetection', 1),
                                     ('DET_GetLocShouldBeOn', 0), ('DET_GetLocIsActive', 1),
                                     ('DET_GetLearningIsOn', 0), ('DET_GetLocError', 1),
                                     ('DET_GetFanError', 0), ('DET_GetLocLocalized', 1)]):
    flag(name, T, 88, bit, value)

DETECTOR_FLAGS_24 = ['DET_GetChamberIsDirty', 'DET_GetLightTooDark']
DETECTOR_FLAGS_25 = ['DET_GetSmokeError', 'DET_GetDetDataStorageError',
                     'DET_GetDetProgramStorageError', 'DET_GetDetProgramError',
                     'DET_GetDetCommError', 'DET_GetHasTrueLix', 'DET_GetTrueLixShouldBeOn',
                     'DET_GetAlarmAfterLoc']
for d in range(2):
    base = 99 + 36 * d
    a = (d,)
    u32('DET_GetDetSerialNum', T, base, 70000 + d, a)
    number_text('DET_GetDetSoftwareNum', T, base + 4, (1234 + d, 5, 12), a)
    number_text('DET_GetDetParameterID', T, base + 8, (4321 + d, 654, 187), a)
    u16('DET_GetSmokeValue10Max', T, base + 13, 2000 + d, a)
    u16('DET_GetSmokeValue10Min', T, base + 15, 100 + d, a)
    u16('DET_GetSmokeValue10SetPoint', T, base + 17, 500 + d, a)
    i16('DET_GetChamberValueRatio', T, base + 19, -37 - d, a)
    u8('DET_GetAlarmThreshold', T, base + 21, 80 + d, a)
    u8('DET_GetPreAlarmThreshold', T, base + 22, 60 + d, a)
    u8('DET_GetSmokeValueRatio', T, base + 23, 25 + d, a)
    state('DET_GetAlarmLED', T, base + 24, 0, 1 + d, a)
    state('DET_GetPreAlarmLED', T, base + 24, 2, 3 - d, a)
    state('DET_GetFailureLED', T, base + 24, 4, 2, a)
    flag('DET_GetChamberIsDirty', T, base + 24, 6, d, a)
    flag('DET_GetLightTooDark', T, base + 24, 7, 1 - d, a)
    for bit, name in enumerate(DETECTOR_FLAGS_25):
        flag(name, T, base + 25, bit, (bit + d) % 2, a)

# Telegram 3: controller, relays, display.
T = 3
number_text('GetSoftwareNum', T, 8, (3012, 7, 45))
number_text('GetParameterID', T, 12, (2211, 333, 44))
f32('GetUinBitVoltage', T, 17, 0.03125)
f32('CTRL_GetUinVoltage', T, 21, 24.5)
f32('GetAlarmResistorValue', T, 25, 1500)
f32('GetNormalResistorValue', T, 29, 4700)
u32('GetNumWriteFailureStorage', T, 33, 123456)
u32('GetNumWriteParameterStorage', T, 37, 4294967295)
u32('GetNumResets', T, 41, 77)
u16('CTRL_GetUinADC', T, 45, 784)
u16('GetUinMinADC', T, 47, 600)
u16('GetUNTCMax', T, 49, 1000)
u16('GetUNTCMin', T, 51, 24)
u8('GetResetCounter', T, 53, 9)
i8('GetNumOfExtModulesSet', T, 54, -1)
u8('DET_GetAlarmDelayMax', T, 55, 60)
u8('DET_GetAlarmDelayMin', T, 56, 0)
u8('DET_GetAlarmDelaySetPoint', T, 57, 10)
u8('GetExtinguishDelay', T, 58, 15)
u8('GetResistorValueTolerance', T, 59, 20)
u8('CTRL_GetNTCDisplayed', T, 60, 2)
flag('CTRL_GetResetInput', T, 61, 0, 1)
flag('CTRL_GetEnableInputState', T, 61, 1, 0)
state('CTRL_GetManActLineState', T, 61, 2, 2)
flag('CTRL_GetMainFailureFlag', T, 61, 4, 1)
flag('DET_GetFailureStorageIsOn', T, 61, 5, 0)
flag('GetHasTwoDetectors', T, 61, 6, 1)
flag('CTRL_GetActivated', T, 62, 0, 1)
flag('CTRL_GetReleased', T, 62, 1, 0)
flag('CTRL_GetIsReleased', T, 62, 2, 1)
for r, value in enumerate([1, 0, 0, 1, 1]):
    flag('REL_GetRelState', T, 62, r + 3, value, (r,))
state('DISP_GetStateOfChoice', T, 63, 0, 1)
for bit, (name, value) in enumerate([('GetConstDataError', 0), ('GetParameterStorageError', 1),
                                     ('CTRL_GetProgramStorageError', 0),
                                     ('CTRL_GetProgramError', 1), ('CTRL_GetHasBattery', 1),
                                     ('CTRL_GetBatteryIsOn', 0)], start=2):
    flag(name, T, 63, bit, value)
for n in range(5):
    base = 64 + 13 * n
    a = (n,)
    f32('TEM_GetNTCTemperature', T, base, 20.5 + n, a)
    f32('GetNTCAlarmValue', T, base + 4, 60.25 + n, a)
    u16('GetNTCbeta', T, base + 8, 3950 + n, a)
    u16('io_GetNTCVoltageADC', T, base + 10, 500 + n, a)
    flag('TEM_GetHasNTC', T, base + 12, 0, 1 if n != 3 else 0, a)
    state('TEM_GetNTCState', T, base + 12, 1, n % 4, a)
for r in range(5):
    mask = (0x1357 * (r + 3)) & 0xFFFF
    data[T][129 + 2 * r] = mask & 0xFF
    data[T][130 + 2 * r] = mask >> 8
    for b in range(16):
        expected[('GetRelayCombineMask', (r, b))] = str((mask >> b) & 1)
event_mask = 0xA5C3
data[T][139] = event_mask & 0xFF
data[T][140] = event_mask >> 8
for b in range(16):
    expected[('REL_GetRelEventMask', (b,))] = str((event_mask >> b) & 1)
u8('GetTwoButtonDelay', T, 141, 50)
u8('GetResetButtonDelay', T, 142, 150)
for bit, (name, value) in enumerate([('DISP_GetResetButton', 1), ('DISP_GetTemperatureButton', 0),
                                     ('DISP_GetKeySwitch', 1), ('DISP_GetVirtualConfigButton', 0),
                                     ('DISP_GetVirtualAirFlowInitButton', 1),
                                     ('DISP_GetVirtualResetButton', 0),
                                     ('DISP_GetVirtualTempChoiceButton', 1),
                                     ('DISP_GetVirtualSoundOffButton', 0)]):
    flag(name, T, 143, bit, value)
flag('GetBuzzerShouldBeOff', T, 144, 0, 1)
state('DISP_GetBuzzerState', T, 144, 1, 2)
flag('BMZ_GetBlockedState', T, 145, 0, 1)
flag('BMZ_GetAlarmState', T, 145, 1, 0, (0,))
flag('BMZ_GetAlarmState', T, 145, 2, 1, (1,))
flag('BMZ_GetPreAlarmState', T, 145, 3, 1, (0,))
flag('BMZ_GetPreAlarmState', T, 145, 4, 0, (1,))
flag('BMZ_GetFaultState', T, 145, 5, 1)
flag('BMZ_GetReleasedState', T, 145, 6, 0)
state('DISP_GetLedOp', T, 146, 0, 3)
state('DISP_GetLedFailure', T, 146, 2, 1)
state('DISP_GetLedBatt', T, 146, 4, 2)
state('DISP_GetLedMainsFailure', T, 146, 6, 0)
state('DISP_GetLedBlocked', T, 147, 0, 2)
state('DISP_GetLedReleased', T, 147, 2, 0)
state('DISP_GetLedMainAlarm', T, 147, 4, 1)
state('DISP_GetLedAlarm', T, 147, 6, 2, (0,))
state('DISP_GetLedAlarm', T, 148, 0, 3, (1,))
state('DISP_GetLedPreAlarm', T, 148, 2, 1, (0,))
state('DISP_GetLedPreAlarm', T, 148, 4, 2, (1,))
state('DISP_GetLedA', T, 148, 6, 3)
state('DISP_GetLedB', T, 149, 0, 1)
state('DISP_GetLedC', T, 149, 2, 2)
state('DISP_GetLedD', T, 149, 4, 0)
state('DISP_GetLedE', T, 149, 6, 3)
u8('DISP_GetBargraphLevel', T, 150, 7)
u8('DISP_GetTemperatureCode', T, 151, 42)
for bit, (name, value) in enumerate([('GetDefaultValuesUsed', 0), ('GetHasBatteryLoader', 1),
                                     ('GetHasNetworkModule', 0), ('GetHasBargraphDisplay', 1),
                                     ('GetHasPreAlarmDisplay', 1),
                                     ('GetHasTemperatureSensors', 1), ('GetHasProgRel', 1)]):
    flag(name, T, 170, bit, value)
# The fault and message masks are not logged; give them a pattern all the same.
put(T, 152, bytes([0x05, 0x00, 0x40, 0x80, 0x01, 0x00, 0x00, 0x00,
                   0xFF, 0xFF, 0xFF, 0xFF, 0x02, 0x00, 0x00, 0x01, 0xFF, 0x07]))

# Telegram 5: ten module blocks.
T = 5
for m in range(10):
    base = 10 + 40 * m
    a = (m,)
    u32('EXT_GetSerialNum', T, base, [12345, 0, 20071234, 501, 502, 503, 504, 505, 506, 99999][m], a)
    number_text('EXT_GetSoftwareNum', T, base + 4, (2000 + m, m, 100 + m), a)
    number_text('EXT_GetParameterID', T, base + 8, (3000 + m, 200 + m, m), a)
    f32('EXT_GetAlarmResistorValue', T, base + 13, 1000.5 + m, a)
    f32('EXT_GetNormalResistorValue', T, base + 17, 3300.25 + m, a)
    f32('EXT_GetIgnitionVoltage', T, base + 21, 12.5 + m, a)
    f32('EXT_GetIgnitionVoltageMin', T, base + 25, 9.75, a)
    u8('EXT_GetResistorValueTolerance', T, base + 29, 10 + m, a)
    state('EXT_GetLedOp', T, base + 30, 0, m % 4, a)
    state('EXT_GetLedBlocked', T, base + 30, 2, (m + 1) % 4, a)
    state('EXT_GetLedFailure', T, base + 30, 4, (m + 2) % 4, a)
    state('EXT_GetLedReleased', T, base + 30, 6, (m + 3) % 4, a)
    for bit, name in enumerate(['EXT_GetIsOnline', 'EXT_GetIsBlocked', 'EXT_GetIsIsolated',
                                'EXT_GetDoActivate', 'EXT_GetIsActivated', 'EXT_GetDoRelease',
                                'EXT_GetIsReleased']):
        flag(name, T, base + 31, bit, (bit + m) % 2, a)
    data[T][base + 32] = 0x11 * (m % 3)
    data[T][base + 33] = 0x80
    data[T][base + 34] = 0xFF
    state('EXT_GetIgnitionLineState', T, base + 35, 0, m % 4, a)
    state('EXT_GetManActLineState', T, base + 35, 2, (3 - m) % 4, a)
    flag('EXT_GetEnableInputState', T, base + 35, 4, m % 2, a)
    state('EXT_GetCutOffRelState', T, base + 35, 6, (m + 1) % 4, a)
    for bit, name in enumerate(['EXT_GetHasIgnition', 'EXT_GetHasCutOffRelay',
                                'EXT_GetHasManualActivationLine', 'EXT_GetHasEnableInput']):
        flag(name, T, base + 36, bit, (bit + m + 1) % 2, a)

# Telegram 4 carries bytes no getter reads.
for i in range(8, 43):
    data[4][i] = i

expected[('GetSerialNum', ())] = str(SERIAL)


def crc16(payload):
    crc = 0
    for b in payload:
        crc ^= b << 8
        for _ in range(8):
            crc = ((crc << 1) ^ 0x1021) if crc & 0x8000 else crc << 1
            crc &= 0xFFFF
    return crc


def finish(command):
    t = data[command]
    h = 4 if command == 5 else 2
    length = len(t) - h - 9
    t[0] = 2
    if h == 4:
        t[1] = 255
        t[2], t[3] = divmod(length, 256)
    else:
        t[1] = length
    t[h] = 10
    t[h + 1] = command
    t[h + 2:h + 6] = struct.pack('>I', SERIAL)
    crc_at = h + length - 2
    crc = crc16(t[h:crc_at])
    t[crc_at], t[crc_at + 1] = crc >> 8, crc & 0xFF
    t[crc_at + 2:crc_at + 9] = bytes(STAMP)
    total = sum(t[:-2])
    t[-2], t[-1] = divmod(total, 256)
    return bytes(t)


telegrams = [finish(k) for k in range(1, 6)]
block = bytearray([0, 5])
for t in telegrams:
    block += struct.pack('>H', len(t))
for t in telegrams:
    block += t
block.append(0)

with open('samples/full.ko3', 'w', newline='') as out:
    out.write(''.join('&H%02X ' % b for b in block) + '\r\n')

# The rows of the data logger, in their order.
rows = [('GetSerialNum', ())]
rows += [(n, ()) for n in [
    'DET_GetFlowValue', 'DET_GetFlowRefValue', 'DET_GetAirTemperature', 'DET_GetAltitude',
    'DET_GetAirPressureSetPoint', 'DET_GetAirFlowFailureDelayMax', 'DET_GetAirFlowFailureDelayMin',
    'DET_GetAirFlowFailureDelaySetPoint', 'DET_GetStaticFlowDevMax', 'DET_GetStaticFlowDevMin',
    'DET_GetStaticFlowDevSetPoint', 'DET_GetFlowInitIsActive', 'DET_GetHasFlow',
    'DET_GetFlowShouldBeOn', 'DET_GetFlowIsOn', 'DET_GetHasDynFlow', 'DET_GetDynFlowShouldBeOn',
    'DET_GetDynFlowIsOn', 'DET_GetFlowInitAborted', 'DET_GetAirFlowError', 'DET_GetFlowDynDevPlus',
    'DET_GetFlowDynDevMinus', 'DET_GetFlowStatDevPlus', 'DET_GetFlowStatDevMinus',
    'DET_GetTemperatureIsHigh', 'DET_GetTemperatureIsLow']]
rows += [(n, ()) for n, _ in fans]
for hole in range(1, 6):
    rows += [('DET_GetSuckTime%dMax' % hole, ()), ('DET_GetSuckTime%dMin' % hole, ())]
rows += [(n, ()) for n in [
    'DET_GetFirePlaceSuckTime', 'DET_GetFirePlace', 'DET_GetHasSingleHoleDetection',
    'DET_GetLocShouldBeOn', 'DET_GetLocIsActive', 'DET_GetLearningIsOn', 'DET_GetLocError',
    'DET_GetFanError', 'DET_GetLocLocalized']]
for d in range(2):
    rows += [(n, (d,)) for n in [
        'DET_GetDetSerialNum', 'DET_GetDetSoftwareNum', 'DET_GetDetParameterID',
        'DET_GetSmokeValue10Max', 'DET_GetSmokeValue10Min', 'DET_GetSmokeValue10SetPoint',
        'DET_GetChamberValueRatio', 'DET_GetAlarmThreshold', 'DET_GetPreAlarmThreshold',
        'DET_GetSmokeValueRatio', 'DET_GetAlarmLED', 'DET_GetPreAlarmLED', 'DET_GetFailureLED']]
    rows += [(n, (d,)) for n in DETECTOR_FLAGS_24 + DETECTOR_FLAGS_25]
rows += [(n, ()) for n in [
    'GetSoftwareNum', 'GetParameterID', 'GetUinBitVoltage', 'CTRL_GetUinVoltage',
    'GetAlarmResistorValue', 'GetNormalResistorValue', 'GetNumWriteFailureStorage',
    'GetNumWriteParameterStorage', 'GetNumResets', 'CTRL_GetUinADC', 'GetUinMinADC', 'GetUNTCMax',
    'GetUNTCMin', 'GetResetCounter', 'GetNumOfExtModulesSet', 'DET_GetAlarmDelayMax',
    'DET_GetAlarmDelayMin', 'DET_GetAlarmDelaySetPoint', 'GetExtinguishDelay',
    'GetResistorValueTolerance', 'CTRL_GetNTCDisplayed', 'CTRL_GetResetInput',
    'CTRL_GetEnableInputState', 'CTRL_GetManActLineState', 'CTRL_GetMainFailureFlag',
    'DET_GetFailureStorageIsOn', 'GetHasTwoDetectors', 'CTRL_GetActivated']]
rows += [('REL_GetRelState', (r,)) for r in range(5)]
rows += [(n, ()) for n in [
    'CTRL_GetReleased', 'CTRL_GetIsReleased', 'DISP_GetStateOfChoice', 'GetConstDataError',
    'GetParameterStorageError', 'CTRL_GetProgramStorageError', 'CTRL_GetProgramError',
    'CTRL_GetHasBattery', 'CTRL_GetBatteryIsOn']]
for n in range(5):
    rows += [(g, (n,)) for g in ['TEM_GetNTCTemperature', 'GetNTCAlarmValue', 'GetNTCbeta',
                                 'io_GetNTCVoltageADC', 'TEM_GetHasNTC', 'TEM_GetNTCState']]
rows += [('GetRelayCombineMask', (r, b)) for r in range(5) for b in range(16)]
rows += [('REL_GetRelEventMask', (b,)) for b in range(16)]
rows += [(n, ()) for n in [
    'GetTwoButtonDelay', 'GetResetButtonDelay', 'DISP_GetResetButton', 'DISP_GetTemperatureButton',
    'DISP_GetKeySwitch', 'DISP_GetVirtualConfigButton', 'DISP_GetVirtualAirFlowInitButton',
    'DISP_GetVirtualResetButton', 'DISP_GetVirtualTempChoiceButton',
    'DISP_GetVirtualSoundOffButton', 'GetBuzzerShouldBeOff', 'DISP_GetBuzzerState']]
rows += [('BMZ_GetBlockedState', ())]
rows += [('BMZ_GetAlarmState', (d,)) for d in range(2)]
rows += [('BMZ_GetPreAlarmState', (d,)) for d in range(2)]
rows += [(n, ()) for n in [
    'BMZ_GetFaultState', 'BMZ_GetReleasedState', 'DISP_GetLedOp', 'DISP_GetLedFailure',
    'DISP_GetLedBatt', 'DISP_GetLedMainsFailure', 'DISP_GetLedBlocked', 'DISP_GetLedReleased',
    'DISP_GetLedMainAlarm']]
rows += [('DISP_GetLedAlarm', (d,)) for d in range(2)]
rows += [('DISP_GetLedPreAlarm', (d,)) for d in range(2)]
rows += [(n, ()) for n in [
    'DISP_GetLedA', 'DISP_GetLedB', 'DISP_GetLedC', 'DISP_GetLedD', 'DISP_GetLedE',
    'DISP_GetBargraphLevel', 'DISP_GetTemperatureCode', 'GetDefaultValuesUsed',
    'GetHasBatteryLoader', 'GetHasNetworkModule', 'GetHasBargraphDisplay',
    'GetHasPreAlarmDisplay', 'GetHasTemperatureSensors', 'GetHasProgRel']]
for m in range(10):
    rows += [(n, (m,)) for n in [
        'EXT_GetSerialNum', 'EXT_GetSoftwareNum', 'EXT_GetParameterID',
        'EXT_GetAlarmResistorValue', 'EXT_GetNormalResistorValue', 'EXT_GetIgnitionVoltage',
        'EXT_GetIgnitionVoltageMin', 'EXT_GetResistorValueTolerance', 'EXT_GetLedOp',
        'EXT_GetLedBlocked', 'EXT_GetLedFailure', 'EXT_GetLedReleased', 'EXT_GetIsOnline',
        'EXT_GetIsBlocked', 'EXT_GetIsIsolated', 'EXT_GetDoActivate', 'EXT_GetIsActivated',
        'EXT_GetDoRelease', 'EXT_GetIsReleased', 'EXT_GetIgnitionLineState',
        'EXT_GetManActLineState', 'EXT_GetEnableInputState', 'EXT_GetCutOffRelState',
        'EXT_GetHasIgnition', 'EXT_GetHasCutOffRelay', 'EXT_GetHasManualActivationLine',
        'EXT_GetHasEnableInput']]

with open('samples/full.values.txt', 'w') as out:
    for getter, args in rows:
        out.write('%s(%s)\t%s\n' % (getter, ', '.join(map(str, args)), expected[(getter, args)]))
print('%d rows, %d bytes in the block' % (len(rows), len(block)))
