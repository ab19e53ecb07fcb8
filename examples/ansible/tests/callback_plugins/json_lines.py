"""Prints each result of a host, but the skipped ones, as one line: [host, task, result]."""
import json

from ansible.plugins.callback import CallbackBase

# The text is what ansible-core's loader of plugins reads.
DOCUMENTATION = "name: json_lines\ntype: stdout\nshort_description: Results as lines of JSON\ndescription: []\n"


class CallbackModule(CallbackBase):
    CALLBACK_VERSION = 2.0
    CALLBACK_TYPE = "stdout"
    CALLBACK_NAME = "json_lines"

    def v2_runner_on_ok(self, result, failed=False):
        print(json.dumps([result._host.name, result._task.name, {**result._result, "failed": failed}]), flush=True)

    def v2_runner_on_failed(self, result, ignore_errors=False):
        self.v2_runner_on_ok(result, failed=True)

    v2_runner_on_unreachable = v2_runner_on_failed
