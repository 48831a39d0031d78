// A local platform for the tests of its page, and what talks to it.

import { execFile, spawn } from "node:child_process";
import http from "node:http";

export class Platform {
    constructor(nexwire) {
        this.nexwire = nexwire;
        this.agent = new http.Agent({ keepAlive: true, maxSockets: 8 });
        this.port = 0;
    }

    /** On the port it had before, if it had one. */
    async start() {
        this.process = spawn(this.nexwire, ["platform", "--port", String(this.port)], { stdio: ["ignore", "pipe", "inherit"] });
        const line = await new Promise((resolve, reject) => {
            this.process.stdout.setEncoding("utf8").once("data", resolve);
            this.process.once("exit", code => reject(new Error(`the platform ended (${code})`)));
        });
        this.address = line.trim().split(" ")[0];
        this.port = Number(new URL(this.address).port);
        this.page = `${this.address}/_workbench/`;
    }

    async stop() {
        if (this.process?.exitCode === null) {
            const ended = new Promise(resolve => this.process.once("exit", resolve));
            this.process.kill("SIGTERM");
            const timer = setTimeout(() => this.process.kill("SIGKILL"), 5000);
            await ended;
            clearTimeout(timer);
        }
    }

    /** nexwire call: {code, out, err}. */
    call(...values) {
        return new Promise(resolve => {
            execFile(this.nexwire, ["call", ...values, "--server", this.address], (error, out, err) =>
                resolve({ code: error?.code ?? 0, out, err }));
        });
    }

    /** One request as it is; {status, text}. */
    send(verb, path, body = undefined, headers = {}) {
        return new Promise((resolve, reject) => {
            const request = http.request(this.address + path, {
                method: verb, agent: this.agent,
                headers: body === undefined ? headers : { "Content-Type": "application/json", "Content-Length": Buffer.byteLength(body), ...headers },
            }, response => {
                let text = "";
                response.setEncoding("utf8").on("data", data => text += data).on("end", () => resolve({ status: response.statusCode, text }));
            });
            request.on("error", reject);
            request.end(body);
        });
    }

    async own(verb, path, body = undefined) {
        const { status, text } = await this.send(verb, `/_workbench/${path}`, body === undefined ? undefined : JSON.stringify(body));
        if (status >= 300) {
            throw new Error(`${verb} ${path}: ${status} ${text}`);
        }
        return text === "" ? undefined : JSON.parse(text);
    }

    /** `count` queries of access groups, some at a time. */
    async flood(count) {
        let left = count;
        await Promise.all(Array.from({ length: 8 }, async () => {
            while (left-- > 0) {
                await this.send("POST", "/7730/v1/accessController/accessGroups");
            }
        }));
    }
}
