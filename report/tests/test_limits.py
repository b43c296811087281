"""Limits from a limits file and from a board description, and what the summary says of them."""

from pathlib import Path

import pytest
from small_outputs import output, temperature_line, written

from kestro_report import command_line, grammar
from kestro_report.description import thresholds_of
from kestro_report.errors import InputError
from kestro_report.limits import Limits, load_limits
from kestro_report.records import Line, Measurement, Run, Section
from kestro_report.units import UNITS, factor_between

CHASSIS = Path(__file__).resolve().parents[2] / "sim/chassis"
BOARD = """<board name="mine"><module name="sim_voltage"><node name="rail"><entry name="2">
<element name="warning_low" value="990"/>
<element name="alarm_high" value="{high}"/>
</entry></node></module></board>"""


def measured(name: str, value: float, unit: str, section: str = "voltage", dut: str = "") -> Measurement:
    run = Run(1, "log.txt", facts={"dut": dut} if dut else {})
    return Measurement(name, value, unit, Section(section, run, 1), Line(1, "", "passed"))


def limits_of(tmp_path: Path, text: str) -> Limits:
    return Limits(Path(written(tmp_path / "limits.yaml", text)))


def report(capsys: pytest.CaptureFixture, *words: str) -> tuple[int, str, str]:
    status = command_line.main(["read", *words])
    return status, *capsys.readouterr()


# --- the limits file ----------------------------------------------------------------------------------------------


@pytest.mark.parametrize("value, bound, holds", [
    (950, "min: 950", True), (949, "min: 950", False), (950, "max: 950", True), (951, "max: 950", False),
    (5, "equal: 5", True), (5.1, "equal: 5", False), (-6, "min: -5", False)])
def test_a_bound_holds_up_to_itself(tmp_path, value, bound, holds):
    limits = limits_of(tmp_path, f"limits:\n  - measurement: voltage 2\n    {bound}\n")
    measurement = measured("voltage 2", value, "mV")
    measurement.limits = limits.of(measurement)
    assert len(measurement.limits) == 1 and (measurement.broken == []) is holds


def test_a_limit_names_its_file_line_and_bound(tmp_path):
    limits = limits_of(tmp_path, "limits:\n  - {measurement: a, max: 1}\n  - measurement: voltage *\n    max: 1\n")
    assert [limit.source for limit in limits.of(measured("voltage 2", 5, "mV"))] == \
        [f"{tmp_path / 'limits.yaml'}: line 3: max"]


@pytest.mark.parametrize("entry, measurement, applies", [
    ("measurement: 'voltage *'", measured("voltage 2 core", 1, "mV"), True),
    ("measurement: 'Voltage *'", measured("voltage 2 core", 1, "mV"), False),
    ("measurement: 'voltage 2'", measured("voltage 2 core", 1, "mV"), False),
    ("{measurement: '*', section: power*}", measured("a", 1, "mV", "power: 13 power 0"), True),
    ("{measurement: '*', section: power*}", measured("a", 1, "mV", "voltage"), False),
    ("{measurement: '*', dut: 'lab*'}", measured("a", 1, "mV", dut="lab 3"), True),
    ("{measurement: '*', dut: 'lab*'}", measured("a", 1, "mV", dut="field 3"), False),
    ("{measurement: '*', dut: 'log*'}", measured("a", 1, "mV"), True)])
def test_a_limit_is_of_the_measurements_that_it_names(tmp_path, entry, measurement, applies):
    entry = entry[1:-1] if entry.startswith("{") else entry
    limits = limits_of(tmp_path, f"limits: [{{{entry}, max: 0}}]\n")
    assert bool(limits.of(measurement)) is applies


@pytest.mark.parametrize("unit, wanted, factor", [
    ("mV", "mV", 1), ("V", "mV", 1000), ("mV", "V", 0.001), ("A", "mA", 1000), ("s", "ms", 1000), ("min", "s", 60),
    ("kW", "W", 1000), ("MiB", "byte", 1048576), ("GHz", "MHz", 1000), ("degC", "degC", 1),
    ("degC", "mV", None), ("V", "A", None), ("degF", "degC", None), ("volt", "mV", None)])
def test_units_of_one_quantity_are_converted(unit, wanted, factor):
    assert factor_between(unit, wanted) == (pytest.approx(factor) if factor else None)


def test_every_unit_of_the_grammar_is_known():
    assert {measure.unit for rule in grammar.load().rules for measure in rule.measures} - set(UNITS) == set()


def test_a_limit_in_volts_judges_millivolts(tmp_path):
    limits = limits_of(tmp_path, "limits: [{measurement: 'voltage 2', unit: V, min: 0.95, max: 1.05}]\n")
    assert [limit.value for limit in limits.of(measured("voltage 2", 1000, "mV"))] == pytest.approx([950, 1050])


def test_a_unit_of_another_quantity_is_an_error_of_the_limits_file(tmp_path):
    limits = limits_of(tmp_path, "limits:\n\n  - {measurement: 'temp*', unit: V, max: 1}\n")
    with pytest.raises(InputError, match=r"limits.yaml: line 3: 'temperature 1' is measured in degC, and V is no unit"):
        limits.of(measured("temperature 1", 60, "degC"))


BAD_FILES = [
    ("", "line 1: 'limits:' with a list"),
    ("- a\n", "line 1: 'limits:' with a list"),
    ("just text\n", "line 1: 'limits:' with a list"),
    ("limits: []\nmore: 1\n", "line 1: 'limits:' with a list"),
    ("limits: []\nlimits: []\n", "line 1: 'limits:' with a list"),
    ("? [limits]\n: []\n", "line 1: 'limits:' with a list"),
    ("limits:\n", "line 1: below 'limits:' stands a list"),
    ("limits:\n  measurement: a\n", "line 2: below 'limits:' stands a list"),
    ("limits:\n  - 5\n", "line 2: a limit is 'measurement: NAME'"),
    ("limits:\n  - [a, b]\n", "line 2: a limit is"),
    ("limits:\n  - min: 5\n", "line 2: 'measurement' is missing"),
    ("limits:\n  - measurement: a\n", "line 2: no bound; one of min, max"),
    ("limits:\n  - measurement:\n    min: 5\n", "line 2: 'measurement' wants a text"),
    ("limits:\n  - measurement: [a]\n    min: 5\n", "line 2: 'measurement' wants a text"),
    ("limits:\n  - measurement: a\n    minimum: 5\n", "line 3: unknown name 'minimum'; there are measurement"),
    ("limits:\n  - measurement: a\n    ? [min]\n    : 5\n", "line 3: unknown name 'a list'"),
    ("limits:\n  - measurement: a\n    min: 5\n    min: 6\n", "line 4: 'min' stands twice"),
    ("limits:\n  - measurement: a\n    min: five\n", "line 3: 'min' wants a number"),
    ("limits:\n  - measurement: a\n    min:\n", "line 3: 'min' wants a number"),
    ("limits:\n  - measurement: a\n    min: .nan\n", "line 3: 'min' wants a number"),
    ("limits:\n  - measurement: a\n    min: nan\n", "line 3: 'min' wants a number"),
    ("limits:\n  - measurement: a\n    max: inf\n", "line 3: 'max' wants a number"),
    ("limits:\n  - measurement: a\n    max: 1e999\n", "line 3: 'max' wants a number"),
    ("limits:\n  - measurement: a\n    max: yes\n", "line 3: 'max' wants a number"),
    ("limits:\n  - measurement: a\n    max: 950 mV\n", "line 3: 'max' wants a number"),
    ("limits:\n  - measurement: a\n    max: {a: 1}\n", "line 3: 'max' wants a number"),
    ("limits:\n  - measurement: a\n    min: 6\n    max: 5\n", "line 2: 'min' is above 'max'"),
    ("limits:\n  - measurement: a\n    warning_min: 6\n    warning_max: 5\n", "line 2: 'warning_min' is above"),
    ("limits:\n  - measurement: a\n    unit: mv\n    min: 5\n", "line 3: there is no unit 'mv'; there are mV, V"),
    ("limits:\n  - {measurement: a, min: 5\n", "line 3: no YAML"),
    ("limits:\n\t- measurement: a\n", "line 2: no YAML"),
    ("limits: &a [*a]\n", "line 1: a limit is"),
    ("limits: [*nowhere]\n", "line 1: no YAML"),
    ("limits: []\n---\nlimits: []\n", "line 2: no YAML"),
    ("limits:\n  - measurement: \x07\n", "line 2: no YAML: a control character"),
    ("limits: " + "[" * 2000, "too deep"),
]


@pytest.mark.parametrize("text, said", BAD_FILES, ids=range(len(BAD_FILES)))
def test_a_bad_limits_file_is_told_with_its_line(tmp_path, text, said):
    with pytest.raises(InputError) as error:
        limits_of(tmp_path, text)
    assert str(error.value).startswith(f"{tmp_path / 'limits.yaml'}: ") and said in str(error.value)


def test_a_limits_file_that_is_no_text_or_no_file_is_told(tmp_path):
    (tmp_path / "binary").write_bytes(b"limits: []\n# \xff\xfe\n")
    with pytest.raises(InputError, match="binary: line 2: no text in UTF-8"):
        load_limits(tmp_path / "binary")
    with pytest.raises(InputError, match="a file with limits is wanted"):
        load_limits(tmp_path)
    with pytest.raises(InputError, match="No such file"):
        load_limits(tmp_path / "none.yaml")
    with pytest.raises(InputError, match="longer than 8 MiB"):
        load_limits(Path("/dev/zero"))


def test_an_empty_list_and_a_byte_order_mark_are_no_error(tmp_path):
    assert limits_of(tmp_path, "\ufefflimits: []\r\n").rules == []


# --- the board description ----------------------------------------------------------------------------------------


def test_a_board_has_the_thresholds_of_all_that_it_includes():
    thresholds = thresholds_of(CHASSIS / "boards/mpu.xml")
    assert {name.split()[0] for name in thresholds} == {"voltage", "temperature", "slot"}
    core = {(each.type, each.severity): each.value for each in thresholds["voltage 2"]}
    assert core == {("GREATER_THAN_OR_EQUAL", "warning"): 930, ("LESS_THAN_OR_EQUAL", "warning"): 1070,
                    ("GREATER_THAN_OR_EQUAL", "alarm"): 880, ("LESS_THAN_OR_EQUAL", "alarm"): 1120}


def test_what_a_board_removes_has_no_thresholds():
    assert "temperature 0" in thresholds_of(CHASSIS / "boards/mpu.xml")
    thresholds = thresholds_of(CHASSIS / "sick/inlet_sensor_silent.xml")
    assert "temperature 0" not in thresholds and "temperature 1" in thresholds


def test_a_chassis_has_the_thresholds_of_the_board_at_its_seat():
    assert thresholds_of(CHASSIS / "chassis.xml").keys() == thresholds_of(CHASSIS / "boards/mpu.xml").keys()


def test_a_power_supply_is_judged_by_what_it_is_made_for(tmp_path):
    limits = Limits(description=CHASSIS / "chassis.xml")
    said = {name: [(limit.severity, limit.value) for limit in limits.of(measured(f"slot 13 power 1 {name}", 1, unit))]
            for name, unit in (("input voltage", "mV"), ("temperature", "degC"), ("output current", "mA"),
                               ("output power", "W"), ("fan speed", "rpm"))}
    assert said == {"input voltage": [("warning", 40000), ("alarm", 75000)], "temperature": [("alarm", 70)],
                    "output current": [("alarm", 45000)], "output power": [("alarm", 2200)], "fan speed": []}


def test_a_board_changes_the_supplies_of_its_chassis(tmp_path):
    file = tmp_path / "mine.xml"
    file.write_text("""<board name="mine" like="mpu" slot="9"><place name="chassis"><module name="sim_power">
        <node name="supply"><entry name="131"><element name="temp_limit" value="50"/></entry></node></module></place>
        <place name="slot7"><module name="sim_voltage"><node name="rail"><entry name="0" remove="yes"/></node></module>
        </place></board>""")
    thresholds = thresholds_of(file)
    assert [(each.value, each.where) for each in thresholds["slot 13 power 1 temperature"]] == \
        [(50, "mine.xml: line 2: temp_limit")]
    assert len(thresholds["voltage 0"]) == 4  # of another board the change is not this one's


def test_a_threshold_judges_only_what_is_measured_in_its_unit():
    limits = Limits(description=CHASSIS / "boards/mpu.xml")
    assert len(limits.of(measured("voltage 2 1V0 processor core", 1, "mV"))) == 4
    assert limits.of(measured("voltage 2", 1, "V"))[0].value == pytest.approx(0.93)
    assert limits.of(measured("voltage 2 alarms", 1, "count")) == ()
    assert limits.of(measured("voltage", 1, "mV")) == () == limits.of(measured("voltage 99", 1, "mV"))


BAD_DESCRIPTIONS = [
    ("", "line 1: no XML"),
    ("limits: []\n", "line 1: no XML"),
    ("<board>\n<module>\n", "line 3: no XML"),
    ("<html/>", "line 1: a board description begins with <board>, this file with <html>"),
    ("<part/>", "it describes no thresholds"),
    ("<!DOCTYPE b [\n<!ENTITY a 'b'>]>\n<board/>", "line 2: a board description declares no entities"),
    ("<board><include part='none'/></board>", "there is no parts/none.xml"),
    ("<board><include/></board>", "there is no parts/.xml"),
    ("<board><include part='../boards/mpu'/></board>", "there is no parts/../boards/mpu.xml"),
    ("<board like='none'/>", "there is no boards/none.xml"),
    (BOARD.format(high="much"), "line 3: 'alarm_high' wants a whole number"),
    (BOARD.format(high=""), "line 3: 'alarm_high' wants a whole number"),
    (BOARD.format(high="1" + "0" * 400), "line 3: 'alarm_high' wants a whole number"),
    (BOARD.format(high='5" remove="no'), "line 3: remove='no' says nothing"),
]


@pytest.mark.parametrize("text, said", BAD_DESCRIPTIONS, ids=range(len(BAD_DESCRIPTIONS)))
def test_a_bad_description_is_told_with_its_line(tmp_path, text, said):
    file = Path(written(tmp_path / "board.xml", text))
    with pytest.raises(InputError) as error:
        thresholds_of(file)
    assert str(error.value).startswith(f"{file}: ") and said in str(error.value)


def test_a_part_that_includes_itself_is_told(tmp_path):
    (tmp_path / "parts").mkdir()
    written(tmp_path / "parts/round.xml", "<part><include part='round'/></part>")
    with pytest.raises(InputError, match="round.xml: it includes itself"):
        thresholds_of(Path(written(tmp_path / "board.xml", "<board><include part='round'/></board>")))


def test_a_description_that_is_no_file_is_told(tmp_path):
    with pytest.raises(InputError, match="a board description is wanted"):
        thresholds_of(tmp_path)
    with pytest.raises(InputError, match="longer than 8 MiB"):
        thresholds_of(Path("/dev/zero"))


# --- in a report --------------------------------------------------------------------------------------------------


def test_the_grammars_names_are_the_descriptions_names(tmp_path, capsys):
    """Every voltage and temperature of the output is judged by its own threshold."""
    hot = output(voltages={3: 1011}, temperatures={1: 96})
    log = written(tmp_path / "log.txt", hot)
    status, out, _ = report(capsys, log, "--description", str(CHASSIS / "boards/mpu.xml"))
    assert status == 1
    assert "voltage: voltage 3 0V9 switch core within limits" in out and "1011 mV is above 1010 mV (mpu.xml: " in out
    assert "temperature: temperature 1 processor within limits" in out and "96 degC is above 95 degC" in out
    assert "temperature 0 air inlet" not in out and "voltage 2 1V0 processor core" not in out


def test_a_value_within_its_limits_is_a_check_that_passed(tmp_path, capsys):
    log = written(tmp_path / "log.txt", output())
    limits = written(tmp_path / "limits.yaml", "limits: [{measurement: 'temperature 1 *', max: 62}]\n")
    without, with_limits = report(capsys, log)[1], report(capsys, log, "--limits", limits)[1]
    assert "5 checks passed" in without and "6 checks passed" in with_limits


def test_a_warning_is_told_and_fails_nothing(tmp_path, capsys):
    log = written(tmp_path / "log.txt", output())
    limits = written(tmp_path / "limits.yaml", "limits: [{measurement: 'temperature 1 *', warning_max: 60}]\n")
    status, out, err = report(capsys, log, "--limits", limits)
    assert status == 0 and err == ""
    assert f"warning  temperature: temperature 1 processor: 62 degC is above 60 degC ({limits}: line 1: warning_max)." \
        in out


def test_warnings_beyond_what_a_person_reads_are_counted(tmp_path, capsys):
    log = written(tmp_path / "log.txt", output(more="".join(temperature_line(1, 62) for _ in range(70))))
    limits = written(tmp_path / "limits.yaml", "limits: [{measurement: 'temperature 1 *', warning_max: 60}]\n")
    out = report(capsys, log, "--limits", limits)[1]
    assert out.count("warning  temperature") == 50 and "and 21 warnings more" in out


def test_a_limit_that_is_of_nothing_is_told(tmp_path, capsys):
    log = written(tmp_path / "log.txt", output())
    limits = written(tmp_path / "limits.yaml",
                     "limits:\n  - {measurement: '*', max: 1e6}\n  - {measurement: wattage, section: x, max: 60}\n")
    status, _, err = report(capsys, log, "--limits", limits)
    assert status == 0 and err == f"kestro_report: {limits}: line 3: no measurement is called 'wattage' in 'x'\n"


def test_a_bad_limits_file_ends_with_2_before_anything_is_written(tmp_path, capsys):
    log = written(tmp_path / "log.txt", output())
    limits = written(tmp_path / "limits.yaml", "limits: [{measurement: a, max: much}]\n")
    status, out, err = report(capsys, log, "--limits", limits, "--tap", str(tmp_path / "tap"))
    assert (status, out) == (2, "") and err == f"kestro_report: {limits}: line 1: 'max' wants a number, such as 950\n"
    assert not (tmp_path / "tap").exists()


def test_the_samples_of_these_tests_are_known_to_the_last_line(tmp_path, capsys):
    assert "unknown" not in report(capsys, written(tmp_path / "log.txt", output()))[1]
