// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// Fills in the blanks of a path.
#include <orlList.h>
#include <orlTokenResolver.h>

#include <iostream>

using namespace ORL_0_81;

namespace {

class Value : public Token {
public:
    Value(char const* name, char const* displayName, char const* value)
        : Token(name, displayName), m_value(value) {}

    Status getValue(String& value) override {
        value = m_value;
        return Status::kSuccess;
    }

private:
    String m_value;
};

// Names hold the delimiters.
class ShotTokens : public TokenProducer {
public:
    void setShot(char const* shot) {
        m_shot = shot;
        notify(ChangeHint()); // the resolvers that know this producer ask again
    }

    Status getTokens(List<SharedPtr<Token>>& tokens) override {
        tokens.append(SharedPtr<Token>(new Value("{SHOW}", "Show", "harbour")));
        tokens.append(SharedPtr<Token>(new Value("{SHOT}", "Shot", m_shot.c_str())));
        return Status::kSuccess;
    }

private:
    String m_shot = "hb_010";
};

} // namespace

int main() {
    SharedPtr<ShotTokens> const shot(new ShotTokens);
    SharedPtr<TokenResolver> const resolver = TokenResolver::create('{', '}');
    resolver->add(shot);

    String const pattern("/shows/{SHOW}/{SHOT}/plate.{FRAME}.exr"); // what no token is called stays
    for (char const* name : {"hb_010", "hb_020"}) {
        shot->setShot(name);
        String path;
        if (Status const status = resolver->resolve(pattern, path); !status) {
            std::cerr << status.getStr() << '\n';
            return 1;
        }
        std::cout << path.c_str() << '\n';
    }
    return 0;
}
