"""The rules of the formats, as a reader of them relies on them."""

import json
import re
from datetime import datetime
from functools import cache
from pathlib import Path

import jsonschema
import yaml

POINT = re.compile(r"(?P<outcome>ok|not ok) (?P<number>\d+) - (?P<name>(?:[^#\\]|\\[#\\])*)(?P<directive> # SKIP .+)?")
KINDS = ("schemaVersion", "testRunArtifact", "testStepArtifact")


@cache
def validator() -> jsonschema.protocols.Validator:
    schema = json.loads(Path(__file__).with_name("ocp_schema.json").read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    return jsonschema.Draft202012Validator(schema)


# --- TAP 14 -----------------------------------------------------------------------------------------------------------

def tap_points(text: str) -> list[tuple[str, str, bool, dict]]:
    """Outcome, name, whether it was skipped and the YAML block of each test point, of a text that keeps the rules."""
    lines = text.split("\n")
    assert lines[0] == "TAP version 14"
    assert lines[-1] == "", "the last line has no end"
    points: list[tuple[str, str, bool, dict]] = []
    at, plans = 1, []
    while at < len(lines) - 1:
        if plan := re.fullmatch(r"1\.\.(\d+)(?: # SKIP .+)?", lines[at]):
            plans.append(int(plan[1]))
        elif found := POINT.fullmatch(lines[at]):
            assert int(found["number"]) == len(points) + 1
            block, at = yaml_block(lines, at)
            name = re.sub(r"\\([#\\])", r"\1", found["name"])
            points.append((found["outcome"], name.rstrip(), bool(found["directive"]), block))
        else:
            assert lines[at].startswith("# ") or lines[at] == "#", f"no line of TAP: {lines[at]!r}"
        at += 1
    assert plans == [len(points)]
    return points


def yaml_block(lines: list[str], at: int) -> tuple[dict, int]:
    """The block behind a test point, and its last line."""
    if lines[at + 1:at + 2] != ["  ---"]:
        return {}, at
    end = lines.index("  ...", at)
    assert all(line.startswith("  ") for line in lines[at + 1:end])
    block = yaml.safe_load("\n".join(line[2:] for line in lines[at + 2:end]))
    assert isinstance(block, dict)
    return block, end


# --- OCP Test and Validation 2.0 --------------------------------------------------------------------------------------

def ocp_records(text: str) -> list[dict]:
    """The lines of a text that keeps the rules of its lines, of their order, and of what they refer to."""
    assert text.endswith("\n")
    records = [json.loads(line, parse_constant=no_number) for line in text.split("\n")[:-1]]
    for number, record in enumerate(records):
        validator().validate(record)
        assert record["sequenceNumber"] == number
        assert datetime.fromisoformat(record["timestamp"]).utcoffset().total_seconds() == 0
        assert sum(kind in record for kind in KINDS) == 1
    runs = [next(iter(record["testRunArtifact"])) for record in records if "testRunArtifact" in record]
    assert "schemaVersion" in records[0] and sum("schemaVersion" in record for record in records) == 1
    assert (runs[0], runs.count("testRunStart")) == ("testRunStart", 1) and "testRunArtifact" in records[1]
    assert (runs[-1], runs.count("testRunEnd")) == ("testRunEnd", 1) and "testRunArtifact" in records[-1]
    check_steps([record["testStepArtifact"] for record in records if "testStepArtifact" in record], hardware(records))
    return records


def no_number(text: str) -> None:
    raise AssertionError(f"{text} is no JSON")


def hardware(records: list[dict]) -> set[str]:
    infos = records[1]["testRunArtifact"]["testRunStart"]["dutInfo"]["hardwareInfos"]
    ids = [info["hardwareInfoId"] for info in infos]
    assert len(ids) == len(set(ids))
    return set(ids)


def check_steps(artifacts: list[dict], hardware_ids: set[str]) -> None:
    """Each step is begun before it is used and ended once, each series of it likewise."""
    begun: set[str] = set()
    ended: set[str] = set()
    series: dict[str, tuple[str, int]] = {}
    for artifact in artifacts:
        step = artifact["testStepId"]
        kind, said = next((name, value) for name, value in artifact.items() if name != "testStepId")
        if kind == "testStepStart":
            assert step not in begun, f"step {step} begins twice"
            begun.add(step)
        assert step in begun, f"step {step} is used before it begins"
        assert step not in ended, f"step {step} is used after its end"
        if kind == "testStepEnd":
            ended.add(step)
            assert not [name for name, (where, _) in series.items() if where == step], "a series is not ended"
        assert said.get("hardwareInfoId", next(iter(hardware_ids), None)) in hardware_ids
        follow_series(kind, said, step, series)
    assert begun == ended


def follow_series(kind: str, said: dict, step: str, series: dict[str, tuple[str, int]]) -> None:
    identity = said.get("measurementSeriesId")
    if kind == "measurementSeriesStart":
        assert identity not in series
        series[identity] = (step, 0)
    elif kind == "measurementSeriesElement":
        assert (step, said["index"]) == series[identity]
        series[identity] = (step, said["index"] + 1)
    elif kind == "measurementSeriesEnd":
        assert series.pop(identity) == (step, said["totalCount"])


def artifacts(records: list[dict], kind: str) -> list[dict]:
    """What the artifacts of a kind say, of the run and of its steps."""
    both = [record.get("testRunArtifact") or record.get("testStepArtifact") or {} for record in records]
    return [artifact[kind] for artifact in both if kind in artifact]
