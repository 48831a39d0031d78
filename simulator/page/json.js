// JSON as it was sent: numbers keep their digits, members their order, and a key that came twice is there twice.

/** {kind: "object" | "list", entries: [[key, node]]} or {kind: "text" | "number" | "word", text, value?}; throws SyntaxError. */
export function parse(text) {
    let at = 0;
    const kNumber = /-?(?:0|[1-9]\d*)(?:\.\d+)?(?:[eE][+-]?\d+)?/y;
    const kWord = /true|false|null/y;
    const kText = /"[^"\\\x00-\x1f]*(?:\\(?:["\\/bfnrt]|u[0-9a-fA-F]{4})[^"\\\x00-\x1f]*)*"/y;

    const fail = what => {
        const before = text.slice(0, at);
        const line = before.split("\n").length;
        const error = new SyntaxError(`${what}, line ${line}, column ${at - before.lastIndexOf("\n")}`);
        throw Object.assign(error, { at });
    };
    const space = () => {
        while (at < text.length && " \t\n\r".includes(text[at])) {
            ++at;
        }
    };
    const take = pattern => {
        pattern.lastIndex = at;
        const match = pattern.exec(text);
        if (match) {
            at += match[0].length;
        }
        return match?.[0];
    };
    const string = () => {
        const found = take(kText);
        return found === undefined ? fail("A text is not closed or has a character it must not have") : found;
    };
    const several = (close, entry) => {
        const entries = [];
        ++at;
        space();
        if (text[at] === close) {
            ++at;
            return entries;
        }
        for (;;) {
            entries.push(entry(entries.length));
            space();
            if (text[at] === close) {
                ++at;
                return entries;
            }
            if (text[at] !== ",") {
                fail(at < text.length ? `A comma or ${close} is missing` : `${close} is missing`);
            }
            ++at;
        }
    };
    const value = depth => {
        if (depth > 200) {
            fail("Too deep");
        }
        space();
        switch (text[at]) {
        case "{":
            return {
                kind: "object",
                entries: several("}", () => {
                    space();
                    if (text[at] !== '"') {
                        fail("A name in quotes is missing");
                    }
                    const key = JSON.parse(string());
                    space();
                    if (text[at] !== ":") {
                        fail("A colon is missing");
                    }
                    ++at;
                    return [key, value(depth + 1)];
                }),
            };
        case "[":
            return { kind: "list", entries: several("]", index => [index, value(depth + 1)]) };
        case '"': {
            const found = string();
            return { kind: "text", text: found, value: JSON.parse(found) };
        }
        default: {
            const word = take(kWord);
            if (word !== undefined) {
                return { kind: "word", text: word };
            }
            const number = take(kNumber);
            return number === undefined ? fail(at < text.length ? "No value" : "A value is missing")
                                        : { kind: "number", text: number };
        }
        }
    };

    const node = value(0);
    space();
    if (at < text.length) {
        fail("Something stands behind the end");
    }
    return node;
}

/** With the same digits, two blanks a level. */
export function print(node, indent = "") {
    if (node.entries === undefined) {
        return node.text;
    }
    const [open, close] = node.kind === "object" ? "{}" : "[]";
    if (node.entries.length === 0) {
        return open + close;
    }
    const inner = `${indent}  `;
    const rows = node.entries.map(([key, child]) =>
        inner + (node.kind === "object" ? `${JSON.stringify(key)}: ` : "") + print(child, inner));
    return `${open}\n${rows.join(",\n")}\n${indent}${close}`;
}
