// validate-openapi.cjs FOLDER NEXWIRE: has the validator in FOLDER/node_modules read the document that NEXWIRE writes.
"use strict";
const { execFileSync } = require("node:child_process");
const { createRequire } = require("node:module");
const path = require("node:path");
const { pathToFileURL } = require("node:url");

const [folder, nexwire] = process.argv.slice(2);
const found = createRequire(path.join(path.resolve(folder), "x.js")).resolve("@seriousme/openapi-schema-validator");

(async () => {
    const { Validator } = await import(pathToFileURL(found).href);
    const document = JSON.parse(execFileSync(nexwire, ["openapi"], { maxBuffer: 1 << 28 }));
    const result = await new Validator().validate(document);
    if (!result.valid) {
        console.error(JSON.stringify(result.errors, null, 2));
        process.exit(1);
    }
    console.log(`${Object.keys(document.paths).length} paths, ` +
        `${Object.keys(document.components.schemas).length} schemas, valid`);
})().catch(error => {
    console.error(error);
    process.exit(1);
});
