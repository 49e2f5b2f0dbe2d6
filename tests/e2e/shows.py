"""Shows for the stories, in the form of a show file."""

import json
import uuid


def new_id():
    return str(uuid.uuid4()).upper()


def show(name, titles, seconds=240, **song):
    guest = {"id": new_id(), "name": "Léa", "mic": "HF 2", "iem": "Mix 3"}
    songs = [{"id": new_id(), "title": title, "duration": seconds,
              "guests": [{**guest, "id": new_id()}], **song} for title in titles]
    return {"id": new_id(), "name": name, "mics": ["HF 2"], "iems": ["Mix 3"], "songs": songs}


def write(path, record):
    path.write_text(json.dumps(record), encoding="utf-8")
    return path
