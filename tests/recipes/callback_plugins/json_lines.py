"""Prints each result, except of skipped tasks, as a line of JSON: [host, task, result]."""
import json

from ansible.plugins.callback import CallbackBase

# Read by ansible-core's plugin loader.
DOCUMENTATION = "name: json_lines\ntype: stdout\nshort_description: Results as lines of JSON\ndescription: []\n"


class CallbackModule(CallbackBase):
    CALLBACK_TYPE = "stdout"

    def v2_runner_on_ok(self, result, failed=False):
        print(json.dumps([result._host.name, result._task.name, {**result._result, "failed": failed}]), flush=True)

    def v2_runner_on_failed(self, result, ignore_errors=False):
        self.v2_runner_on_ok(result, failed=True)
