"""Reads the bodies of multipart requests with the parser of Python's own library.

read-multipart.py CONTENT_TYPE OUTPUT BODY...: the files' contents, joined, go to OUTPUT; a line per part to standard output.
"""
import email
import sys

content = b""
for name in sys.argv[3:]:
    with open(name, "rb") as body:
        message = email.message_from_bytes(b"Content-Type: " + sys.argv[1].encode() + b"\r\n\r\n" + body.read())
    if not message.is_multipart() or message.defects:
        sys.exit(f"{name} is no multipart body: {message.defects}")
    for part in message.get_payload():
        print(part.get_param("name", header="content-disposition"), part.get_filename(), part.get_content_type())
        content += part.get_payload(decode=True)
with open(sys.argv[2], "wb") as output:
    output.write(content)
