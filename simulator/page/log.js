// The exchanges that the page knows, and those of them that pass the filters. No elements in here.

export const kKept = 10000;

export class Log {
    all = [];
    shown = [];
    waiting = null; ///< What came while the list is held; null: it is not.
    lastId = 0;
    #outcomes = new Set();
    #function = "";
    #text = "";
    #inBodies = new Set();

    restart() {
        this.all = [];
        this.shown = [];
        this.waiting = this.waiting && [];
        this.lastId = 0;
        this.#inBodies.clear();
    }

    /** How many rows left the top of `shown`. */
    add(batch) {
        // A connection that was made anew may repeat some.
        const fresh = batch.filter(each => each.id > this.lastId);
        if (fresh.length === 0) {
            return 0;
        }
        this.lastId = fresh.at(-1).id;
        if (this.waiting !== null) {
            this.waiting.push(...fresh);
            this.waiting.splice(0, this.waiting.length - kKept);
            return 0;
        }
        return this.#take(fresh);
    }

    #take(fresh) {
        // Not push(...): a batch may have more elements than a call may have arguments.
        for (const each of fresh) {
            this.all.push(each);
            if (this.#passes(each)) {
                this.shown.push(each);
            }
        }
        if (this.all.length <= kKept) {
            return 0;
        }
        this.all.splice(0, this.all.length - kKept);
        const gone = this.#indexFrom(this.all[0].id);
        this.shown.splice(0, gone);
        return gone;
    }

    hold(held) {
        const waited = this.waiting;
        this.waiting = held ? [] : null;
        return !held && waited ? this.#take(waited) : 0;
    }

    /** @param filter  {outcomes: Set, function: "", text: ""} */
    filter(filter) {
        this.#outcomes = filter.outcomes;
        this.#function = filter.function.trim().toLowerCase();
        this.#text = filter.text.trim().toLowerCase();
        this.#inBodies.clear();
        this.shown = this.all.filter(each => this.#passes(each));
    }

    /** Exchanges in whose bodies or headers the platform found the text. */
    found(ids) {
        ids.forEach(id => this.#inBodies.add(id));
        this.shown = this.all.filter(each => this.#passes(each));
    }

    get isFiltered() {
        return this.#outcomes.size > 0 || this.#function !== "" || this.#text !== "";
    }

    /** Of the row with the identifier, -1 if it is not shown. */
    indexOf(id) {
        const index = this.#indexFrom(id);
        return this.shown[index]?.id === id ? index : -1;
    }

    /** Of the first row that is not older. */
    #indexFrom(id) {
        let low = 0;
        let high = this.shown.length;
        while (low < high) {
            const middle = (low + high) >> 1;
            if (this.shown[middle].id < id) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        return low;
    }

    nearest(id) {
        return Math.min(this.#indexFrom(id), this.shown.length - 1);
    }

    #passes(each) {
        if (this.#outcomes.size > 0 && !this.#outcomes.has(each.outcome)) {
            return false;
        }
        if (this.#function !== "") {
            each.names ??= `${each.module ?? ""} ${(each.functions ?? []).join(" ")}`.toLowerCase();
            if (!each.names.includes(this.#function)) {
                return false;
            }
        }
        if (this.#text === "" || this.#inBodies.has(each.id)) {
            return true;
        }
        each.words ??= [each.verb, each.path, each.query, each.code, each.msg, each.status, each.module, ...(each.functions ?? [])]
            .join(" ").toLowerCase();
        return each.words.includes(this.#text);
    }
}
