"""A browser to test pages with: headless Chromium, driven through ChromeDriver by plain WebDriver commands."""
import json
import os
import re
import shutil
import subprocess
import tempfile
import urllib.error
import urllib.request

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"
KEYS = {"Enter": "\ue007", "Escape": "\ue00c", "Space": " ", "End": "\ue010", "Home": "\ue011", "Left": "\ue012",
        "Up": "\ue013", "Right": "\ue014", "Down": "\ue015", "Shift": "\ue008", "Control": "\ue009",
        "PageDown": "\ue00f", "PageUp": "\ue00e"}


class Browser:
    def __init__(self):
        for program in ("chromium", "chromedriver"):
            if not shutil.which(program):
                raise RuntimeError(f"{program} is not installed; ./test --all installs it")
        self.folder = tempfile.mkdtemp()
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE, text=True)
        for line in self.driver.stdout:
            started = re.search(r"started successfully on port (\d+)", line)
            if started:
                break
        self.base = f"http://127.0.0.1:{started.group(1)}/session"
        options = {"binary": shutil.which("chromium"), "args": [
            "--headless", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
            "--disable-component-update", "--disable-sync", "--disable-dev-shm-usage", "--window-size=1280,800",
            f"--user-data-dir={self.folder}", *(["--no-sandbox"] if os.geteuid() == 0 else [])]}
        made = self.call("POST", "", {"capabilities": {"alwaysMatch": {
            "goog:chromeOptions": options, "goog:loggingPrefs": {"browser": "ALL"}}}})
        self.base += "/" + made["sessionId"]

    def call(self, method, path, body=None):
        request = urllib.request.Request(self.base + path, method=method,
                                         data=None if body is None else json.dumps(body).encode())
        try:
            with urllib.request.urlopen(request, timeout=120) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"]) from None

    def open(self, path):
        self.call("POST", "/url", {"url": path.resolve().as_uri()})

    def run(self, script, *arguments):
        return self.call("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def element(self, selector):
        return self.call("POST", "/element", {"using": "css selector", "value": selector})

    def click(self, element):
        if isinstance(element, str):
            element = self.element(element)
        self.call("POST", f"/element/{element[ELEMENT]}/click", {})

    def press(self, *keys, held=None):
        """Keys as a person presses them, one after the other, with another one held down if wanted."""
        steps = []
        for key in keys:
            value = KEYS.get(key, key)
            steps += [{"type": "keyDown", "value": value}, {"type": "keyUp", "value": value}]
        if held:
            steps = [{"type": "keyDown", "value": KEYS[held]}, *steps, {"type": "keyUp", "value": KEYS[held]}]
        self.call("POST", "/actions", {"actions": [{"type": "key", "id": "keys", "actions": steps}]})

    def devtools(self, command, **parameters):
        return self.call("POST", "/goog/cdp/execute", {"cmd": command, "params": parameters})

    def complaints(self):
        """What the page wrote to the console, errors of scripts included."""
        return [entry["message"] for entry in self.call("POST", "/se/log", {"type": "browser"})]

    def close(self):
        try:
            self.call("DELETE", "")
        finally:
            self.driver.terminate()
            self.driver.wait(10)
            self.driver.stdout.close()
            shutil.rmtree(self.folder, ignore_errors=True)
