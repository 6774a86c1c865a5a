"""A headless Chromium, driven through chromedriver by the W3C's WebDriver protocol, which is JSON over
HTTP; only what the tests of the page need."""

import base64
import json
import shutil
import subprocess
import tempfile
import time
import urllib.request

DEADLINE_S = 60
# Without these Chromium looks for its maker's hosts at every start, and wants a sandbox that a
# container does not grant.
ARGUMENTS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
             "--disable-background-networking", "--disable-component-update", "--disable-sync",
             "--disable-dev-shm-usage", "--no-proxy-server", "--hide-scrollbars"]
ELEMENT = "element-6066-11e4-a52e-4f735466cecf"  # the protocol's own key of an element


def wait_until(condition, what, deadline_s=DEADLINE_S):
    """Polls until the condition holds. The result is what it gave."""
    end = time.monotonic() + deadline_s
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError(f"never happened within {deadline_s} s: {what}")
        time.sleep(0.02)


class Browser:
    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="k7-browser-")
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE,
                                       stderr=subprocess.DEVNULL, text=True)
        self.port = None
        for line in self.driver.stdout:
            if "started successfully on port " in line:
                self.port = int(line.rsplit(" ", 1)[1].strip(" .\n"))
                break
        self.opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))
        self.session = ""
        options = {"args": [*ARGUMENTS, f"--user-data-dir={self.folder}"],
                   "binary": shutil.which("chromium")}
        reply = self._ask("POST", "/session", {"capabilities": {"alwaysMatch": {
            "browserName": "chrome", "goog:chromeOptions": options,
            "goog:loggingPrefs": {"browser": "ALL"}}}})
        self.session = f"/session/{reply['sessionId']}"

    def close(self):
        try:
            self._ask("DELETE", "")
        finally:
            self.driver.terminate()
            self.driver.wait()
            self.driver.stdout.close()
            shutil.rmtree(self.folder, ignore_errors=True)

    def _ask(self, method, path, body=None):
        data = None if method != "POST" else json.dumps(body or {}).encode()
        request = urllib.request.Request(f"http://127.0.0.1:{self.port}{self.session}{path}", data,
                                         {"Content-Type": "application/json"}, method=method)
        try:
            with self.opener.open(request, timeout=DEADLINE_S) as reply:
                return json.load(reply)["value"]
        except urllib.error.HTTPError as error:
            raise AssertionError(json.load(error)["value"]["message"]) from None

    def size(self, width, height):
        """Sizes what a page has to itself, whatever the browser's own frame takes."""
        self._ask("POST", "/goog/cdp/execute", {"cmd": "Emulation.setDeviceMetricsOverride", "params": {
            "width": width, "height": height, "deviceScaleFactor": 1, "mobile": False}})

    def open(self, address):
        self._ask("POST", "/url", {"url": address})

    def run(self, script, *arguments):
        """The result of the body of a function in the page; a promise is waited for."""
        return self._ask("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def text(self, selector):
        return self.run("return document.querySelector(arguments[0]).textContent", selector)

    def wait_for(self, script, *arguments):
        return wait_until(lambda: self.run(f"return {script}", *arguments), script)

    def _find(self, selector):
        return self._ask("POST", "/element", {"using": "css selector", "value": selector})[ELEMENT]

    def click(self, selector):
        """Clicks as a user does: what is hidden, covered or out of reach cannot be clicked."""
        self._ask("POST", f"/element/{self._find(selector)}/click")

    def type(self, selector, text):
        element = self._find(selector)
        self._ask("POST", f"/element/{element}/clear")
        self._ask("POST", f"/element/{element}/value", {"text": text})

    def choose(self, selector, value):
        self.click(f"{selector} option[value='{value}']")

    def accept(self):
        """Presses OK in the question that the page asks."""
        self._ask("POST", "/alert/accept")

    def complaints(self, address):
        """What the browser has complained about on the page at this address since the last call:
        faults of scripts, what the page may not load."""
        return [entry["message"] for entry in self._ask("POST", "/se/log", {"type": "browser"})
                if entry["level"] == "SEVERE" and address in entry["message"]]

    def screenshot(self, path):
        with open(path, "wb") as file:
            file.write(base64.b64decode(self._ask("GET", "/screenshot")))
