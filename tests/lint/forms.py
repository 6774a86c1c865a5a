#!/usr/bin/env python3
"""Checks the YAML files of .github: that each can be read, and that issue forms and workflows have the
shape that the service expects, which refuses a faulty one only once it is online. Run from anywhere,
with another source folder as its argument if wanted."""

import pathlib
import re
import sys

import yaml

ROOT = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else __file__).resolve()
ROOT = ROOT if ROOT.is_dir() else ROOT.parents[2]
KINDS = {"markdown": "value", "input": "label", "textarea": "label", "dropdown": "label",
         "checkboxes": "label"}


def is_text(value):
    return isinstance(value, str) and value.strip() != ""


def form_faults(form):
    if not isinstance(form, dict):
        return ["is no issue form"]
    faults = [f"has no {key}" for key in ("name", "description") if not is_text(form.get(key))]
    body = form.get("body")
    if not isinstance(body, list) or not body:
        return faults + ["has no body"]
    ids, labels = set(), set()
    for number, item in enumerate(body, 1):
        kind = item.get("type") if isinstance(item, dict) else None
        if kind not in KINDS:
            faults.append(f"body {number}: unknown type {kind}")
            continue
        attributes = item.get("attributes") or {}
        if not is_text(attributes.get(KINDS[kind])):
            faults.append(f"body {number}: no {KINDS[kind]}")
        if kind == "markdown":
            continue
        own = item.get("id", "")
        if not re.fullmatch(r"[A-Za-z0-9_-]+", str(own)):
            faults.append(f"body {number}: id '{own}'")
        for seen, what in ((ids, own), (labels, attributes.get("label"))):
            if what in seen:
                faults.append(f"body {number}: '{what}' stands there twice")
            seen.add(what)
        if kind == "dropdown":
            options = attributes.get("options")
            if not isinstance(options, list) or not options or not all(map(is_text, options)):
                faults.append(f"body {number}: options are not texts")
            elif len(set(options)) != len(options) or "none" in map(str.lower, options):
                faults.append(f"body {number}: an option twice, or None, which is offered anyway")
        if not isinstance(item.get("validations", {}).get("required", False), bool):
            faults.append(f"body {number}: required is neither true nor false")
    if not ids:
        faults.append("asks for nothing")
    return faults


def config_faults(config):
    if not isinstance(config, dict) or not isinstance(config.get("blank_issues_enabled"), bool):
        return ["blank_issues_enabled is neither true nor false"]
    return []


def workflow_faults(workflow):
    # YAML 1.1 reads the key "on" as true.
    if not isinstance(workflow, dict) or not (workflow.get("on") or workflow.get(True)):
        return ["is started by nothing"]
    jobs = workflow.get("jobs")
    if not isinstance(jobs, dict) or not jobs:
        return ["has no jobs"]
    faults = []
    for name, job in jobs.items():
        if not is_text(job.get("runs-on")):
            faults.append(f"job {name}: no runs-on")
        if not job.get("steps"):
            faults.append(f"job {name}: no steps")
        for number, step in enumerate(job.get("steps") or [], 1):
            if is_text(step.get("run")) == is_text(step.get("uses")):
                faults.append(f"job {name}, step {number}: not one of run and uses")
    return faults


def main():
    faults = []
    files = sorted((ROOT / ".github").rglob("*.y*ml"))
    for file in files:
        name = file.relative_to(ROOT)
        try:
            content = yaml.safe_load(file.read_text())
        except yaml.YAMLError as error:
            faults.append(f"{name}: {error}")
            continue
        check = (workflow_faults if file.parent.name == "workflows" else
                 config_faults if file.stem == "config" else form_faults)
        faults += [f"{name}: {fault}" for fault in check(content)]
    for fault in faults:
        print(f"ERROR {fault}")
    print(f"{len(files)} files, {len(faults)} faults")
    return 1 if faults or not files else 0


if __name__ == "__main__":
    sys.exit(main())
