#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""A live service over WebRTC on another stack than ours (GStreamer), for tests.

Prints its port. Answers each POST /v1/live/sessions with a session that sounds a tone of 660 Hz and, whenever an answer
is asked for, writes which pitch it hears. Ends with its standard input.
"""

import http.server
import json
import os
import re
import sys
import threading

import gi

gi.require_version("Gst", "1.0")
gi.require_version("GstSdp", "1.0")
gi.require_version("GstWebRTC", "1.0")
from gi.repository import GLib, Gst, GstSdp, GstWebRTC  # noqa: E402

RATE = 24000


class Session:
    """One call. Its callbacks come from GStreamer's threads; what they share is only appended to or replaced."""

    def __init__(self, offer):
        self.answered = threading.Event()
        self.answer = None
        self.heard = b""
        self.channel = None
        self.responses = 0
        payload = re.search(r"a=rtpmap:(\d+) opus/48000", offer, re.IGNORECASE).group(1)
        self.pipeline = Gst.parse_launch(
            "webrtcbin name=call bundle-policy=max-bundle "
            "audiotestsrc is-live=true freq=660 volume=0.3 ! audio/x-raw,rate=48000,channels=1 ! opusenc "
            f"! rtpopuspay pt={payload} "
            f"! application/x-rtp,media=audio,encoding-name=OPUS,clock-rate=48000,payload={payload} ! call."
        )
        self.call = self.pipeline.get_by_name("call")
        # The stack leaves loopback out by itself. Its agent is kept: the binding takes the only reference to it.
        self.agent = self.call.get_property("ice-agent")
        self.agent.emit("add-local-ip-address", "127.0.0.1")
        self.call.connect("pad-added", self.on_track)
        self.call.connect("on-data-channel", self.on_channel)
        self.call.connect("notify::ice-gathering-state", self.on_gathering)
        self.pipeline.set_state(Gst.State.PLAYING)
        _, message = GstSdp.SDPMessage.new_from_text(offer)
        description = GstWebRTC.WebRTCSessionDescription.new(GstWebRTC.WebRTCSDPType.OFFER, message)
        self.call.emit("set-remote-description", description, Gst.Promise.new_with_change_func(self.on_offer, None))

    def on_offer(self, _promise, _data):
        self.call.emit("create-answer", None, Gst.Promise.new_with_change_func(self.on_answer, None))

    def on_answer(self, promise, _data):
        reply = promise.get_reply()  # owns the answer, so it stays
        answer = reply.get_value("answer")
        self.call.emit("set-local-description", answer, Gst.Promise.new())

    def on_gathering(self, *_):
        if self.call.get_property("ice-gathering-state") == GstWebRTC.WebRTCICEGatheringState.COMPLETE:
            self.answer = self.call.get_property("local-description").sdp.as_text()
            self.answered.set()

    def on_track(self, _call, pad):
        if pad.direction != Gst.PadDirection.SRC:
            return
        ear = Gst.parse_bin_from_description(
            "rtpopusdepay ! opusdec ! audioconvert ! audioresample "
            f"! audio/x-raw,format=S16LE,rate={RATE},channels=1 ! appsink name=ear emit-signals=true sync=false",
            True,
        )
        ear.get_by_name("ear").connect("new-sample", self.on_sound)
        self.pipeline.add(ear)
        ear.sync_state_with_parent()
        pad.link(ear.get_static_pad("sink"))

    def on_sound(self, sink):
        buffer = sink.emit("pull-sample").get_buffer()
        self.heard = (self.heard + buffer.extract_dup(0, buffer.get_size()))[-RATE:]  # half a second
        return Gst.FlowReturn.OK

    def pitch(self):
        """From the crossings of zero; 0 when it is quiet."""
        samples = memoryview(self.heard[: len(self.heard) // 2 * 2]).cast("h")
        if not samples or max(samples) < 1000:
            return 0
        ups = sum(1 for a, b in zip(samples, samples[1:]) if a < 0 <= b)
        return round(ups * RATE / len(samples))

    def on_channel(self, _call, channel):
        self.channel = channel
        channel.connect("on-message-string", self.on_text)
        self.tell({"type": "session.started", "session": {"id": "sess_gst"}})

    def on_text(self, _channel, text):
        kind = json.loads(text).get("type")
        if kind == "response.create":
            self.responses += 1
            name = f"resp_{self.responses}"
            self.backend({"type": "response.created", "response": {"id": name}})
            self.backend({"type": "response.output_text.done", "text": f"heard {self.pitch()} Hz"})
            self.backend({"type": "response.completed", "response": {"id": name, "status": "completed"}})
        elif kind == "session.close":
            self.tell({"type": "session.closed", "reason": "client_requested"})

    def backend(self, event):
        self.tell({"type": "response.event", "event": event})

    def tell(self, message):
        self.channel.emit("send-string", json.dumps(message))


class Door(http.server.BaseHTTPRequestHandler):
    sessions = []

    def do_POST(self):
        body = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
        session = Session(body["transport"]["sdp"])
        self.sessions.append(session)
        session.answered.wait(10)
        answer = {"session": {"id": "sess_gst"}, "transport": {"type": "webrtc", "sdp": session.answer}}
        data = json.dumps(answer).encode()
        self.send_response(201)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(data)))
        self.end_headers()
        self.wfile.write(data)

    def log_message(self, *_):
        pass


def main():
    Gst.init(None)
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Door)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    print(server.server_address[1], flush=True)
    loop = GLib.MainLoop()
    threading.Thread(target=lambda: (sys.stdin.read(), loop.quit()), daemon=True).start()
    loop.run()
    os._exit(0)  # GStreamer's threads may still run


if __name__ == "__main__":
    main()
