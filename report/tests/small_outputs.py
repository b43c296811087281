"""Outputs of kestro_test for the tests, put together from its lines."""

from pathlib import Path

VOLTAGES = {0: ("12V0 input", 12040), 2: ("1V0 processor core", 1004), 3: ("0V9 switch core", 903)}
TEMPERATURES = {0: ("air inlet", 25), 1: ("processor", 62)}
END = "cmd_exec used second:0\ncmd_exec used millisecond:850\n"


def voltage_line(number: int, millivolts: int, prefix: str = "Success:") -> str:
    name = VOLTAGES[number][0]
    return f"{prefix} get voltage_id {number:<3} value is {millivolts}mv. desc: {name}. max {millivolts} " \
           f"min {millivolts}\n"


def temperature_line(number: int, celsius: int, prefix: str = "Success:") -> str:
    return f"{prefix} get temperature_id {number:<3} value is {celsius}. desc: {TEMPERATURES[number][0]}\n"


def output(voltages: dict[int, int] | None = None, temperatures: dict[int, int] | None = None, more: str = "",
           end: str = END) -> str:
    """Two sections of a self-test; voltages and temperatures differ from the usual ones where they are given."""
    rails = {number: value for number, (_, value) in VOLTAGES.items()} | (voltages or {})
    sensors = {number: value for number, (_, value) in TEMPERATURES.items()} | (temperatures or {})
    return ("\n*********   voltage test begin:  ********\n" + "".join(voltage_line(*each) for each in rails.items())
            + "\n*********   temperature test begin:  ********\n" + "".join(temperature_line(*each) for each in sensors.items())
            + more + end)


def written(path: Path, text: str, facts: str = "") -> str:
    path.write_text(text, encoding="utf-8")
    if facts:
        path.with_name(path.stem + ".facts.yaml").write_text(facts, encoding="utf-8")
    return str(path)
